// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/VariantRecords.h"

namespace tvx::check
{

namespace
{

void ExpectNullObject(Trial& trial, IVariant& variant)
{
    const auto mark = MakeRef<ProbeObject>();
    IObject* came = mark.Get();
    trial.Gives("GetObject", variant.GetObject(&came), TVX_OK);
    trial.Same("the object of the variant", came, nullptr);
}

void TakesAnObjectWithoutItsFaceForNull(Trial& trial)
{
    const auto bare = MakeRef<BareObject>();
    ExpectNullObject(trial, *ReadVariant(trial, MakeRecord(6, Ref<IObjectBase>(bare)), 6));
    ExpectNullObject(trial, *ReadVariant(trial, MakeRecord(6, Ref<IObjectBase>()), 6));
    trial.Equal("the refusing object's reference count afterwards", bare->GetRefCount(), 1u);
}

void RefusesUnknownTypes(Trial& trial)
{
    std::vector<Ref<ScriptedReader>> readers = {MakeRef<ScriptedReader>()};
    for (const auto type : {0, 7, -5, -1, 0x7FFFFFFF})
        readers.push_back(MakeRecord(type, std::int32_t{1}));
    const auto factory = trial.Get<IDeserializable>(VariantExport);
    const auto mark = MakeRef<BareObject>();
    for (const auto& reader : readers)
    {
        IObjectBase* out = mark.Get();
        trial.Gives("Deserialize of an unknown type", factory->Deserialize(reader.Get(), &out), TVX_E_FAIL);
        trial.Same("the out of a failed Deserialize", out, mark.Get());
        trial.Gives("Deserialize of an unknown type with a null out", factory->Deserialize(reader.Get(), nullptr),
                    TVX_E_FAIL);
    }
}

void ZeroesAMissingNumber(Trial& trial)
{
    ExpectNumber(trial, *ReadVariant(trial, MakeRecord(1), 1), &IVariant::GetBool, false);
    ExpectNumber(trial, *ReadVariant(trial, MakeRecord(2), 2), &IVariant::GetInt, std::int32_t{0});
    ExpectNumber(trial, *ReadVariant(trial, MakeRecord(3), 3), &IVariant::GetFloat, 0.0f);
    ExpectNumber(trial, *ReadVariant(trial, MakeRecord(4), 4), &IVariant::GetDouble, 0.0);
}

void GivesNullForAMissingTextOrObject(Trial& trial)
{
    ExpectNullObject(trial, *ReadVariant(trial, MakeRecord(6), 6));
    const auto mark = MakeString(trial, "mark");
    IString* came = mark.Get();
    trial.Gives("GetString", ReadVariant(trial, MakeRecord(5), 5)->GetString(&came), TVX_OK);
    trial.Same("the text of the variant", came, nullptr);
}

void ReadsForANullOut(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto text = MakeRef<WatchedReader>();
    text->named["type"] = std::int32_t{5};
    text->named["value"] = "text";
    const auto factory = trial.Get<IDeserializable>(VariantExport);
    trial.Gives("Deserialize of a text with a null out", factory->Deserialize(text.Get(), nullptr), TVX_OK);
    trial.Equal("the number of texts read", text->texts.size(), std::size_t{1});
    trial.Equal("the references on the text afterwards", text->CountReferencesLeft(), 0u);
    {
        const auto record = MakeRecord(6, Ref<IObjectBase>(object));
        trial.Gives("Deserialize of an object with a null out", factory->Deserialize(record.Get(), nullptr), TVX_OK);
    }
    trial.Equal("the object's reference count afterwards", object->GetRefCount(), 1u);
}

// Delivers what it is asked for, and says that it failed.
class GrudgingReader final : public ScriptedReaderImpl<CountedImpl<GrudgingReader, IDeserializer>, host::HostString>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;

    Result ReadNamedBool(const char* name, bool* out) override
    {
        static_cast<void>(ScriptedReaderImpl::ReadNamedBool(name, out));
        return -42;
    }
    Result ReadNamedInt(const char* name, std::int32_t* out) override
    {
        static_cast<void>(ScriptedReaderImpl::ReadNamedInt(name, out));
        return -42;
    }
    Result ReadNamedString(const char* name, IString** out) override
    {
        static_cast<void>(ScriptedReaderImpl::ReadNamedString(name, out));
        return -42;
    }
};

Ref<IVariant> ReadGrudgingly(Trial& trial, std::int32_t type, const ScriptedReader::Value& value)
{
    const auto reader = MakeRef<GrudgingReader>();
    reader->named["type"] = type;
    reader->named["value"] = value;
    return ReadAs<IVariant>(trial, VariantExport, *reader);
}

void IgnoresTheReadersResults(Trial& trial)
{
    ExpectNumber(trial, *ReadGrudgingly(trial, 1, true), &IVariant::GetBool, true);
    Ref<IString> text;
    trial.Gives("GetString", ReadGrudgingly(trial, 5, "text")->GetString(text.Receive()), TVX_OK);
    trial.Expect(static_cast<bool>(text), "the variant to hold a text", "null");
    trial.Equal("the text that was read", text->GetText(), "text");
}

constexpr Check Checks[] = {
    {"serialise-variant-unknown-type-fails", "Records without a type, and of the types 0, 7, -5 and others, are read.",
     "A type that is missing or not from 1 to 6 gives -1 without a report and leaves the out untouched, also a null "
     "one.",
     RefusesUnknownTypes},
    {"serialise-variant-missing-number-is-zero", "Records of the types 1 to 4 without a value are read.",
     "A value that is missing is false or 0, and reading succeeds.", ZeroesAMissingNumber},
    {"serialise-variant-missing-text-or-object-is-null", "Records of the types 5 and 6 without a value are read.",
     "A text or object that is missing is null, and reading succeeds.", GivesNullForAMissingTextOrObject},
    {"serialise-variant-null-out-succeeds", "Records are read with a null out.",
     "Reading with a null out gives 0, and what was read is released.", ReadsForANullOut},
    {"serialise-variant-ignores-reader-results", "A reader delivers values and answers -42.",
     "What the reader answers is not looked at; what it delivered counts.", IgnoresTheReadersResults},
    {"serialise-variant-object-without-face-is-null", "Records of type 6 hold null and an object without IObject.",
     "An object that does not answer com.talvere.general.tvx.IObject/1.0 is taken for null.",
     TakesAnObjectWithoutItsFaceForNull},
};

}  // namespace

extern const Family DamagedVariantFamily = {"serialising", VariantExport, Needs::Module, Checks};

}  // namespace tvx::check
