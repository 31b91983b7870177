// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotChecking.h"
#include "Tool/Checks/TextSerializer.h"

namespace tvx::check
{

namespace
{

constexpr const char Format[] = "com.talvere.general.tvx.GenericSimpleMapImplementationFormat/1.1";

void GetObject(Trial& trial)
{
    const TextSerializer serializer(trial);
    const auto map = MakeFilledSimpleMap(trial, {"key", "stored"});
    const auto numbered =
        Take<IObject>(trial, "GetObject by its number", TVX_OK,
                      [&](void** out) { return CallISimpleMapGetObject(ToC<ISimpleMap>(map), "key", out); });
    trial.Same("the object that slot 20 reads", numbered.Get(), ToC<IObject>(serializer.object));
    Ref<IObject> named;
    trial.Gives("GetObject by its name", map->GetObject("key", named.Receive()), TVX_OK);
    trial.Same("the object that GetObject reads", named.Get(), ToC<IObject>(serializer.object));
}

void SetObject(Trial& trial)
{
    const TextSerializer serializer(trial);
    const auto object = MakeRef<SerializableObject>();
    const auto map = MakeFilledSimpleMap(trial, {});
    trial.Gives("SetObject by its number", CallISimpleMapSetObject(ToC<ISimpleMap>(map), "1", ToC<IObject>(object)),
                TVX_OK);
    ExpectEntries(trial, map, "SetObject by its number", {"1", "text of the object"});
    trial.Gives("SetObject by its name", map->SetObject("2", object.Get()), TVX_OK);
    ExpectEntries(trial, map, "SetObject by its name", {"1", "text of the object", "2", "text of the object"});
}

void WritesWithTheSerializer(Trial& trial)
{
    const TextSerializer serializer(trial);
    const auto object = MakeRef<SerializableObject>();
    const auto map = MakeSimpleMap(trial);
    trial.Gives("SetObject", map->SetObject("key", object.Get()), TVX_OK);
    trial.Equal("how often the import was fetched", serializer.proxy->calls, 1);
    trial.Equal("the calls of the serializer factory", serializer.factory->calls, Texts{"CreateSerializer"});
    trial.Equal("the calls of the serializer", serializer.writer->calls,
                Texts{"Begin", "WriteNamedObject Object", "End", "GetText"});
    trial.Same("the object to write", serializer.writer->objects.front().Get(), ToC<ISerializable>(object));
    trial.Equal("the references left on the serializer", serializer.CountReferencesLeft(), 0u);
}

void ReadsWithTheDeserializer(Trial& trial)
{
    const TextSerializer serializer(trial);
    const auto map = MakeFilledSimpleMap(trial, {"key", "stored"});
    Ref<IObject> object;
    trial.Gives("GetObject", map->GetObject("key", object.Receive()), TVX_OK);
    trial.Equal("how often the import was fetched", serializer.proxy->calls, 1);
    trial.Equal("the calls of the serializer factory", serializer.factory->calls, Texts{"CreateDeserializer"});
    trial.Equal("the calls of the deserializer", serializer.reader->calls,
                Texts{"SetText stored", "Begin", "ReadNamedObject Object", "End"});
    object = nullptr;
    trial.Equal("the references left on the serializer", serializer.CountReferencesLeft(), 0u);
}

void Create(Trial& trial)
{
    const auto factory = trial.Get<IFactory>(SimpleMapExport);
    const auto map =
        TakeObject<ISimpleMap>(trial, "Create by its number", TVX_OK,
                               [&](void** out) { return CallIFactoryCreate(ToC<IFactory>(factory), out); });
    ExpectEntries(trial, map, "Create", {});
}

void GetFormatIdOfTheFactory(Trial& trial)
{
    const auto factory = trial.Get<IDeserializable>(SimpleMapExport);
    CheckFormatIdSlot(trial, ToC<IDeserializable>(factory), &CallIDeserializableGetFormatId, Format);
}

void Deserialize(Trial& trial)
{
    const auto reader = MakeRef<ScriptedReader>();
    reader->items = {"key", "text"};
    const auto map = TakeByDeserializeSlot<ISimpleMap>(trial, SimpleMapExport, reader);
    trial.Equal("the calls of the reader", reader->calls,
                Texts{"BeginArray Values", "ReadString", "ReadString", "EndArray"});
    ExpectEntries(trial, map, "Deserialize by its number", {"key", "text"});
}

void GetFormatIdOfTheMap(Trial& trial)
{
    const auto face = trial.QueryAs<ISerializable>(MakeSimpleMap(trial), "a settings map");
    CheckFormatIdSlot(trial, ToC<ISerializable>(face), &CallISerializableGetFormatId, Format);
}

void Serialize(Trial& trial)
{
    const auto map = MakeFilledSimpleMap(trial, {"key", "text"});
    const auto face = trial.QueryAs<ISerializable>(map, "a settings map");
    CheckSerializeSlot(trial, ToC<ISerializable>(face),
                       {"BeginArray Values", "WriteString key", "WriteString text", "EndArray"});
}

void OfTheSerializableFace(Trial& trial)
{
    const auto face = trial.QueryAs<ISerializable>(MakeSimpleMap(trial), "a settings map");
    CheckBaseSlots(trial, *face, "the ISerializable face");
}

constexpr Check Checks[] = {
    {"slot-settings-map-20-get-object", "GetObject is called by its number.",
     "Slot 20 of ISimpleMap is GetObject: it gives the object that the imported serializer reads.", GetObject},
    {"slot-settings-map-21-set-object", "SetObject is called by its number.",
     "Slot 21 of ISimpleMap is SetObject: it keeps the text that the imported serializer makes of an object.",
     SetObject},
    {"slot-imported-serializer-set-object", "SetObject is given a serializer that records its calls.",
     "A settings map calls the imported serializer at its slots: CreateSerializer, then Begin, WriteNamedObject of the "
     "ISerializable face under \"Object\", End and GetText, and keeps no reference.",
     WritesWithTheSerializer},
    {"slot-imported-serializer-get-object", "GetObject is given a deserializer that records its calls.",
     "A settings map calls the imported serializer at its slots: CreateDeserializer, then SetText, Begin, "
     "ReadNamedObject of \"Object\" and End, and keeps no reference.",
     ReadsWithTheDeserializer},
    {"slot-settings-map-factory-11-create", "Create is called by its number.",
     "Slot 11 of IFactory is Create: it gives a new, empty settings map.", Create},
    {"slot-settings-map-deserializable-11-get-format-id", "GetFormatId of the factory is called by its number.",
     "Slot 11 of IDeserializable is GetFormatId.", GetFormatIdOfTheFactory},
    {"slot-settings-map-deserializable-12-deserialize", "Deserialize is called by its number.",
     "Slot 12 of IDeserializable is Deserialize: it reads a settings map by the reader's slots.", Deserialize},
    {"slot-settings-map-serializable-7-get-format-id", "GetFormatId of a settings map is called by its number.",
     "Slot 7 of ISerializable is GetFormatId.", GetFormatIdOfTheMap},
    {"slot-settings-map-serializable-8-serialize", "Serialize is called by its number.",
     "Slot 8 of ISerializable is Serialize: it writes the settings map by the writer's slots.", Serialize},
    {"slot-settings-map-serializable-1-to-6-object-base",
     "The operations of IObjectBase are called by their numbers in the table of ISerializable.",
     "Slots 1 to 6 of ISerializable are those of IObjectBase, and count the references of the whole map.",
     OfTheSerializableFace},
};

}  // namespace

extern const Family SlotsOfSettingsMapObjectFamily = {"slots", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
