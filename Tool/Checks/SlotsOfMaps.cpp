// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotChecking.h"

namespace tvx::check
{

namespace
{

constexpr const char Format[] = "com.talvere.general.tvx.GenericMapImplementationFormat/1.1";

// What a map of one object under "key" serialises.
Texts GetOneEntry()
{
    return {"BeginArray Values", "WriteString key", "WriteObject", "EndArray"};
}

// A map of one object under "key".
Ref<IMap> MakeFilledMap(Trial& trial, const Ref<ProbeObject>& object)
{
    const auto reader = MakeRef<ScriptedReader>();
    reader->items = {"key", Ref<IObjectBase>(object)};
    return ReadFrom<IMap>(trial, MapExport, reader);
}

void ExpectOneEntry(Trial& trial, const Ref<IMap>& map, const std::string& what, const Ref<ProbeObject>& object)
{
    const auto writer = WriteOut(trial, map);
    trial.Equal("what the map serialises after " + what, writer->calls, GetOneEntry());
    trial.Same("the object that the map serialises after " + what, writer->objects.front().Get(), object.Get());
}

void SetValue(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto numbered = MakeMap(trial);
    trial.Gives("SetValue by its number", CallIMapSetValue(ToC<IMap>(numbered), "key", ToC<IObject>(object)), TVX_OK);
    ExpectOneEntry(trial, numbered, "SetValue by its number", object);
    const auto named = MakeMap(trial);
    trial.Gives("SetValue by its name", named->SetValue("key", object.Get()), TVX_OK);
    ExpectOneEntry(trial, named, "SetValue by its name", object);
}

using GetSlot = int32_t (*)(void* object, const char* key, void** out);
using GetByName = Result (IMap::*)(const char* key, IObject** out);

void CheckGet(Trial& trial, GetSlot byNumber, GetByName byName)
{
    const auto object = MakeRef<ProbeObject>();
    const auto map = MakeFilledMap(trial, object);
    const auto numbered = Take<IObject>(trial, "the call by its number", TVX_S_VALUE,
                                        [&](void** out) { return byNumber(ToC<IMap>(map), "key", out); });
    trial.Same("the object by the number", numbered.Get(), object.Get());
    Ref<IObject> named;
    trial.Gives("the call by its name", (map.Get()->*byName)("key", named.Receive()), TVX_S_VALUE);
    trial.Same("the object by the name", named.Get(), object.Get());
    void* absent = object.Get();
    trial.Gives("the call for an absent key", byNumber(ToC<IMap>(map), "ke", &absent), TVX_S_NOKEY);
    trial.Same("the out for an absent key", absent, nullptr);
}

void GetValue(Trial& trial)
{
    CheckGet(trial, &CallIMapGetValue, &IMap::GetValue);
}

void LookupValue(Trial& trial)
{
    CheckGet(trial, &CallIMapLookupValue, &IMap::LookupValue);
}

void CreateMap(Trial& trial)
{
    const auto factory = trial.Get<IMapFactory>(MapExport);
    const auto map = Take<IMap>(trial, "CreateMap by its number", TVX_OK,
                                [&](void** out) { return CallIMapFactoryCreateMap(ToC<IMapFactory>(factory), out); });
    trial.Equal("what the new map serialises", WriteOut(trial, map)->calls, Texts{"BeginArray Values", "EndArray"});
}

void GetFormatIdOfTheFactory(Trial& trial)
{
    const auto factory = trial.Get<IDeserializable>(MapExport);
    CheckFormatIdSlot(trial, ToC<IDeserializable>(factory), &CallIDeserializableGetFormatId, Format);
}

void Deserialize(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto reader = MakeRef<ScriptedReader>();
    reader->items = {"key", Ref<IObjectBase>(object)};
    const auto map = TakeByDeserializeSlot<IMap>(trial, MapExport, reader);
    trial.Equal("the calls of the reader", reader->calls,
                Texts{"BeginArray Values", "ReadString", "ReadObject", "EndArray"});
    ExpectOneEntry(trial, map, "Deserialize by its number", object);
}

void GetFormatIdOfTheMap(Trial& trial)
{
    const auto face = trial.QueryAs<ISerializable>(MakeMap(trial), "a map");
    CheckFormatIdSlot(trial, ToC<ISerializable>(face), &CallISerializableGetFormatId, Format);
}

void Serialize(Trial& trial)
{
    const auto map = MakeFilledMap(trial, MakeRef<ProbeObject>());
    const auto face = trial.QueryAs<ISerializable>(map, "a map");
    CheckSerializeSlot(trial, ToC<ISerializable>(face), GetOneEntry());
}

void OfTheSerializableFace(Trial& trial)
{
    const auto face = trial.QueryAs<ISerializable>(MakeMap(trial), "a map");
    CheckBaseSlots(trial, *face, "the ISerializable face");
}

constexpr Check Checks[] = {
    {"slot-map-11-set-value", "SetValue is called by its number.",
     "Slot 11 of IMap is SetValue: it keeps an object under a key.", SetValue},
    {"slot-map-12-get-value", "GetValue is called by its number.",
     "Slot 12 of IMap is GetValue: it gives 102 and the object, or 101 and null.", GetValue},
    {"slot-map-13-lookup-value", "LookupValue is called by its number.",
     "Slot 13 of IMap is LookupValue: it does the same as GetValue, and has a slot of its own.", LookupValue},
    {"slot-map-factory-11-create-map", "CreateMap is called by its number.",
     "Slot 11 of IMapFactory is CreateMap: it gives a new, empty map.", CreateMap},
    {"slot-map-deserializable-11-get-format-id", "GetFormatId of the factory is called by its number.",
     "Slot 11 of IDeserializable is GetFormatId.", GetFormatIdOfTheFactory},
    {"slot-map-deserializable-12-deserialize", "Deserialize is called by its number.",
     "Slot 12 of IDeserializable is Deserialize: it reads a map by the reader's slots.", Deserialize},
    {"slot-map-serializable-7-get-format-id", "GetFormatId of a map is called by its number.",
     "Slot 7 of ISerializable is GetFormatId.", GetFormatIdOfTheMap},
    {"slot-map-serializable-8-serialize", "Serialize is called by its number.",
     "Slot 8 of ISerializable is Serialize: it writes the map by the writer's slots.", Serialize},
    {"slot-map-serializable-1-to-6-object-base",
     "The operations of IObjectBase are called by their numbers in the table of ISerializable.",
     "Slots 1 to 6 of ISerializable are those of IObjectBase, and count the references of the whole map.",
     OfTheSerializableFace},
};

}  // namespace

extern const Family SlotsOfMapFamily = {"slots", MapExport, Needs::Module, Checks};

}  // namespace tvx::check
