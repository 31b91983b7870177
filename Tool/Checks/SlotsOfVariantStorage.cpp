// SPDX-License-Identifier: MIT
#include "Tool/Checks/VariantSlots.h"

#include <utility>

namespace tvx::check
{

namespace
{

using Lines = std::vector<std::string>;

constexpr const char FormatId[] = "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1";

void SerializableNamesItsFormat(Trial& trial)
{
    const std::string what = "slot 7 (GetFormatId) of ISerializable of a variant";
    const auto variant = trial.QueryAs<ISerializable>(GetSample(trial, IVariant::TypeInt), "a variant");
    const auto id =
        TakeFromC<IString>(trial, what, TVX_OK,
                           [&](void** out) { return CallISerializableGetFormatId(ToC<ISerializable>(variant), out); });
    ExpectTextOf(trial, what, trial.QueryAs<IString>(id, "what " + what + " gives"), FormatId);
}

void SerializableWritesItself(Trial& trial)
{
    const auto variant = trial.QueryAs<ISerializable>(GetSample(trial, IVariant::TypeInt), "a variant");
    const auto writer = MakeRef<RecordingWriter>();
    trial.Gives("slot 8 (Serialize) of ISerializable of a variant",
                CallISerializableSerialize(ToC<ISerializable>(variant), ToC<ISerializer>(writer)), TVX_OK);
    trial.Expect(!writer->calls.empty(), "slot 8 (Serialize) of a variant to call the writer", "no call");
}

void DeserializableNamesItsFormat(Trial& trial)
{
    const std::string what = "slot 11 (GetFormatId) of IDeserializable of the variant factory";
    const auto factory = trial.Get<IDeserializable>(VariantExport);
    const auto id = TakeFromC<IString>(trial, what, TVX_OK,
                                       [&](void** out)
                                       { return CallIDeserializableGetFormatId(ToC<IDeserializable>(factory), out); });
    ExpectTextOf(trial, what, trial.QueryAs<IString>(id, "what " + what + " gives"), FormatId);
}

Ref<ScriptedReader> MakeReader(std::int32_t type, ScriptedReader::Value value)
{
    auto reader = MakeRef<ScriptedReader>();
    reader->named["type"] = type;
    reader->named["value"] = std::move(value);
    return reader;
}

void DeserializableReadsVariants(Trial& trial)
{
    const std::string what = "slot 12 (Deserialize) of IDeserializable of the variant factory";
    const auto factory = trial.Get<IDeserializable>(VariantExport);
    const auto reader = MakeReader(IVariant::TypeInt, std::int32_t{9});
    const auto deserialize = [&](void** out)
    { return CallIDeserializableDeserialize(ToC<IDeserializable>(factory), ToC<IDeserializer>(reader), out); };
    const auto object = TakeFromC<IObjectBase>(trial, what, TVX_OK, deserialize);
    trial.QueryAs<IVariant>(object, "what " + what + " gives");
    trial.Equal("what " + what + " reads", reader->calls, Lines{"ReadNamedInt type", "ReadNamedInt value"});
}

// What the caller's own writer is called for, which shows that the module has its slots at the right numbers. The line of the
// type is of no interest.
void ExpectWriting(Trial& trial, std::int32_t type, const std::string& expected)
{
    auto calls = WriteVariant(trial, GetSample(trial, type));
    std::erase_if(calls, [](const std::string& call) { return call.starts_with("WriteNamedInt type "); });
    trial.Equal("the operations of the writer that a variant calls for its value", calls, Lines{expected});
}

// The same for the reader.
void ExpectReading(Trial& trial, std::int32_t type, ScriptedReader::Value value, const char* expected)
{
    auto reader = MakeReader(type, std::move(value));
    Ref<IObjectBase> object;
    trial.Get<IDeserializable>(VariantExport)->Deserialize(reader.Get(), object.Receive());
    if (reader->calls.empty())
    {
        static_cast<void>(reader.Detach());  // it was taken for something else and cannot be trusted any more
        trial.Skip("Deserialize of the variant factory does not call the reader");
    }
    trial.Equal("the operations of the reader that the variant factory calls", reader->calls,
                Lines{"ReadNamedInt type", expected});
}

void WritesBools(Trial& trial)
{
    ExpectWriting(trial, IVariant::TypeBool, "WriteNamedBool value true");
}

void WritesInts(Trial& trial)
{
    ExpectWriting(trial, IVariant::TypeInt, "WriteNamedInt value " + Show(IntSample));
}

void WritesDoubles(Trial& trial)
{
    ExpectWriting(trial, IVariant::TypeDouble, "WriteNamedDouble value 0.10000000000000001");
}

void WritesStrings(Trial& trial)
{
    ExpectWriting(trial, IVariant::TypeString, std::string("WriteNamedString value ") + TextSample);
}

void WritesObjects(Trial& trial)
{
    ExpectWriting(trial, IVariant::TypeObject, "WriteNamedObject value");
}

void ReadsBools(Trial& trial)
{
    ExpectReading(trial, IVariant::TypeBool, true, "ReadNamedBool value");
}

void ReadsInts(Trial& trial)
{
    ExpectReading(trial, IVariant::TypeInt, IntSample, "ReadNamedInt value");
}

void ReadsDoubles(Trial& trial)
{
    ExpectReading(trial, IVariant::TypeDouble, DoubleSample, "ReadNamedDouble value");
}

void ReadsStrings(Trial& trial)
{
    ExpectReading(trial, IVariant::TypeString, std::string(TextSample), "ReadNamedString value");
}

void ReadsObjects(Trial& trial)
{
    ExpectReading(trial, IVariant::TypeObject, Ref<IObjectBase>(MakeRef<ProbeObject>()), "ReadNamedObject value");
}

constexpr Check Checks[] = {
    {"slot-variant-serializable-7-get-format-id", "GetFormatId of a variant is called by its number.",
     "Slot 7 of ISerializable is GetFormatId: it gives the identifier of the format as a new string.",
     SerializableNamesItsFormat},
    {"slot-variant-serializable-8-serialize", "Serialize of a variant is called by its number.",
     "Slot 8 of ISerializable is Serialize: the object writes itself into the writer.", SerializableWritesItself},
    {"slot-variant-deserializable-11-get-format-id", "GetFormatId of the variant factory is called by its number.",
     "Slot 11 of IDeserializable is GetFormatId: it gives the identifier of the format as a new string.",
     DeserializableNamesItsFormat},
    {"slot-variant-deserializable-12-deserialize", "Deserialize of the variant factory is called by its number.",
     "Slot 12 of IDeserializable is Deserialize: it makes a new object of what it reads.", DeserializableReadsVariants},
    {"slot-variant-serializer-7-write-named-bool", "A bool variant writes itself into a writer of the caller's.",
     "Slot 7 of ISerializer is WriteNamedBool: a module writes a bool by this slot and no other.", WritesBools},
    {"slot-variant-serializer-8-write-named-int", "An integer variant writes itself into a writer of the caller's.",
     "Slot 8 of ISerializer is WriteNamedInt: a module writes an integer by this slot and no other.", WritesInts},
    {"slot-variant-serializer-10-write-named-double", "A double variant writes itself into a writer of the caller's.",
     "Slot 10 of ISerializer is WriteNamedDouble: a module writes a double by this slot and no other.", WritesDoubles},
    {"slot-variant-serializer-11-write-named-string", "A string variant writes itself into a writer of the caller's.",
     "Slot 11 of ISerializer is WriteNamedString: a module writes a text by this slot and no other.", WritesStrings},
    {"slot-variant-serializer-12-write-named-object", "An object variant writes itself into a writer of the caller's.",
     "Slot 12 of ISerializer is WriteNamedObject: a module writes an object by this slot and no other.", WritesObjects},
    {"slot-variant-deserializer-7-read-named-bool", "A bool variant is read from a reader of the caller's.",
     "Slot 7 of IDeserializer is ReadNamedBool: a module reads a bool by this slot and no other.", ReadsBools},
    {"slot-variant-deserializer-8-read-named-int", "An integer variant is read from a reader of the caller's.",
     "Slot 8 of IDeserializer is ReadNamedInt: a module reads an integer by this slot and no other.", ReadsInts},
    {"slot-variant-deserializer-10-read-named-double", "A double variant is read from a reader of the caller's.",
     "Slot 10 of IDeserializer is ReadNamedDouble: a module reads a double by this slot and no other.", ReadsDoubles},
    {"slot-variant-deserializer-11-read-named-string", "A string variant is read from a reader of the caller's.",
     "Slot 11 of IDeserializer is ReadNamedString: a module reads a text by this slot and no other.", ReadsStrings},
    {"slot-variant-deserializer-12-read-named-object", "An object variant is read from a reader of the caller's.",
     "Slot 12 of IDeserializer is ReadNamedObject: a module reads an object by this slot and no other.", ReadsObjects},
};

}  // namespace

extern const Family SlotsOfVariantStorageFamily = {"slots", VariantExport, Needs::Module, Checks};

}  // namespace tvx::check
