// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/VariantRecords.h"

namespace tvx::check
{

namespace
{

void ReadsBool(Trial& trial)
{
    const auto variant = ReadVariant(trial, MakeRecord(1, true), 1);
    ExpectNumber(trial, *variant, &IVariant::GetBool, true);
}

void ReadsInt(Trial& trial)
{
    const auto variant = ReadVariant(trial, MakeRecord(2, std::int32_t{-5}), 2);
    ExpectNumber(trial, *variant, &IVariant::GetInt, std::int32_t{-5});
}

void ReadsFloat(Trial& trial)
{
    for (const double written : {0.10000000149011612, 0.1})
    {
        const auto variant = ReadVariant(trial, MakeRecord(3, written), 3);
        ExpectNumber(trial, *variant, &IVariant::GetFloat, 0.1f);
    }
}

void ReadsDouble(Trial& trial)
{
    const auto variant = ReadVariant(trial, MakeRecord(4, 0.1), 4);
    ExpectNumber(trial, *variant, &IVariant::GetDouble, 0.1);
}

void ReadsText(Trial& trial)
{
    const auto reader = MakeRef<WatchedReader>();
    reader->named["type"] = std::int32_t{5};
    reader->named["value"] = "W\xC3\xB6rter";
    auto variant = ReadAs<IVariant>(trial, VariantExport, *reader);
    trial.Equal("the number of texts read", reader->texts.size(), std::size_t{1});
    trial.Equal("the references on the text with the variant", reader->CountReferencesLeft(), 1u);
    Ref<IString> text;
    trial.Gives("GetString", variant->GetString(text.Receive()), TVX_OK);
    trial.Same("the text of the variant", text.Get(), reader->texts[0].Get());
    text = nullptr;
    variant = nullptr;
    trial.Equal("the references on the text without the variant", reader->CountReferencesLeft(), 0u);
}

void ReadsObject(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    auto variant = ReadVariant(trial, MakeRecord(6, Ref<IObjectBase>(object)), 6);
    trial.Equal("the object's reference count with the variant", object->GetRefCount(), 2u);
    Ref<IObject> came;
    trial.Gives("GetObject", variant->GetObject(came.Receive()), TVX_OK);
    trial.Same("the object of the variant", came.Get(), object.Get());
    came = nullptr;
    variant = nullptr;
    trial.Equal("the object's reference count without the variant", object->GetRefCount(), 1u);
}

void ReadsByTheTypesOperation(Trial& trial)
{
    const char* const operations[] = {"Bool", "Int", "Double", "Double", "String", "Object"};
    for (std::int32_t type = 1; type <= 6; ++type)
    {
        const auto reader = MakeRecord(type);
        static_cast<void>(ReadVariant(trial, reader, type));
        trial.Equal("the calls that read type " + std::to_string(type), reader->calls,
                    (Lines{"ReadNamedInt type", std::string("ReadNamed") + operations[type - 1] + " value"}));
    }
}

// Equal variants, that is those that write the same.
void ReadsWhatWasWritten(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    for (const auto& variant : {MakeBool(trial, true), MakeInt(trial, -2147483647 - 1), MakeFloat(trial, 0.1f),
                                MakeDouble(trial, 0.1), MakeText(trial, "text"), MakeObject(trial, object.Get())})
    {
        const auto writer = MakeRef<RecordingWriter>();
        const auto face = trial.QueryAs<ISerializable>(variant, "a variant");
        trial.Gives("Serialize", face->Serialize(writer.Get()), TVX_OK);
        ExpectWritten(trial, "the copy of a variant", Copy(trial, VariantExport, variant), writer->calls);
    }
    trial.Equal("the object's reference count afterwards", object->GetRefCount(), 1u);
}

constexpr Check Checks[] = {
    {"serialise-variant-reads-bool", "A record of type 1 is read.", "Type 1 with a bool gives a bool variant.",
     ReadsBool},
    {"serialise-variant-reads-int", "A record of type 2 is read.", "Type 2 with an integer gives an integer variant.",
     ReadsInt},
    {"serialise-variant-reads-float-narrowed", "Records of type 3 are read.",
     "Type 3 with a double gives a float variant of the double narrowed; what 0.1f wrote gives exactly 0.1f.",
     ReadsFloat},
    {"serialise-variant-reads-double", "A record of type 4 is read.", "Type 4 with a double gives a double variant.",
     ReadsDouble},
    {"serialise-variant-reads-text", "A record of type 5 is read.",
     "Type 5 gives a string variant that holds the string of the reader with a reference of its own, and no other.",
     ReadsText},
    {"serialise-variant-reads-object", "A record of type 6 is read.",
     "Type 6 gives an object variant that holds the object of the reader with a reference of its own, and no other.",
     ReadsObject},
    {"serialise-variant-reads-by-the-types-operation", "Records of every type are read, and the reader's calls noted.",
     "\"type\" is read as an integer, then \"value\" by the one operation for the type.", ReadsByTheTypesOperation},
    {"serialise-variant-reads-what-was-written", "A variant of each type is written and read back.",
     "What was read writes the same as what was written.", ReadsWhatWasWritten},
};

}  // namespace

extern const Family ReadingVariantFamily = {"serialising", VariantExport, Needs::Module, Checks};

}  // namespace tvx::check
