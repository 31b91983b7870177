// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotChecking.h"

namespace tvx::check
{

namespace
{

// A write by its number and by its name, each on a map of its own, leaves both maps with the same entries.
template <class ByNumber, class ByName>
void CheckWrite(Trial& trial, const std::string& what, const Texts& expected, ByNumber&& byNumber, ByName&& byName)
{
    const auto numbered = MakeFilledSimpleMap(trial, {});
    trial.Gives(what + " by its number", byNumber(ToC<ISimpleMap>(numbered)), TVX_OK);
    ExpectEntries(trial, numbered, what + " by its number", expected);
    const auto named = MakeFilledSimpleMap(trial, {});
    trial.Gives(what + " by its name", byName(*named.Get()), TVX_OK);
    ExpectEntries(trial, named, what + " by its name", expected);
}

void SetDouble(Trial& trial)
{
    CheckWrite(
        trial, "SetDouble", {"key", "2.5"}, [](void* map) { return CallISimpleMapSetDouble(map, "key", 2.5); },
        [](ISimpleMap& map) { return map.SetDouble("key", 2.5); });
}

void SetInt(Trial& trial)
{
    CheckWrite(
        trial, "SetInt", {"key", "-12"}, [](void* map) { return CallISimpleMapSetInt(map, "key", -12); },
        [](ISimpleMap& map) { return map.SetInt("key", -12); });
}

void SetString(Trial& trial)
{
    CheckWrite(
        trial, "SetString", {"key", "text"}, [](void* map) { return CallISimpleMapSetString(map, "key", "text"); },
        [](ISimpleMap& map) { return map.SetString("key", "text"); });
}

void SetSubMap(Trial& trial)
{
    const auto source = MakeFilledSimpleMap(trial, {"key", "text"});
    CheckWrite(
        trial, "SetSubMap", {"path\\key", "text"},
        [&](void* map) { return CallISimpleMapSetSubMap(map, "path", ToC<ISimpleMap>(source)); },
        [&](ISimpleMap& map) { return map.SetSubMap("path", source.Get()); });
}

void GetDouble(Trial& trial)
{
    const auto map = MakeFilledSimpleMap(trial, {"key", "7.5"});
    RoomyOut<double> numbered{-1};
    double named = -1;
    trial.Gives("GetDouble by its number", CallISimpleMapGetDouble(ToC<ISimpleMap>(map), "key", &numbered.value),
                TVX_OK);
    trial.Equal("the double that slot 14 reads", numbered.value, 7.5);
    trial.Gives("GetDouble by its name", map->GetDouble("key", &named), TVX_OK);
    trial.Equal("the double that GetDouble reads", named, 7.5);
}

void GetInt(Trial& trial)
{
    const auto map = MakeFilledSimpleMap(trial, {"key", "7.5"});
    RoomyOut<std::int32_t> numbered{-1};
    std::int32_t named = -1;
    trial.Gives("GetInt by its number", CallISimpleMapGetInt(ToC<ISimpleMap>(map), "key", &numbered.value), TVX_OK);
    trial.Equal("the integer that slot 15 reads", numbered.value, 7);
    trial.Gives("GetInt by its name", map->GetInt("key", &named), TVX_OK);
    trial.Equal("the integer that GetInt reads", named, 7);
}

void GetString(Trial& trial)
{
    const auto map = MakeFilledSimpleMap(trial, {"key", "7.5"});
    const auto numbered =
        Take<IString>(trial, "GetString by its number", TVX_S_VALUE,
                      [&](void** out) { return CallISimpleMapGetString(ToC<ISimpleMap>(map), "key", out); });
    trial.Equal("the text that slot 16 reads", numbered->GetText(), "7.5");
    Ref<IString> named;
    trial.Gives("GetString by its name", map->GetString("key", named.Receive()), TVX_S_VALUE);
    trial.Expect(static_cast<bool>(named), "GetString by its name to give a text", "null");
    trial.Equal("the text that GetString reads", named->GetText(), "7.5");
}

void HasKey(Trial& trial)
{
    const auto map = MakeFilledSimpleMap(trial, {"key", "text"});
    RoomyOut<bool> present;
    RoomyOut<bool> absent{true};
    bool named = false;
    trial.Gives("HasKey by its number", CallISimpleMapHasKey(ToC<ISimpleMap>(map), "key", &present.value), TVX_OK);
    trial.Gives("HasKey of an absent key", CallISimpleMapHasKey(ToC<ISimpleMap>(map), "ke", &absent.value), TVX_OK);
    trial.Gives("HasKey by its name", map->HasKey("key", &named), TVX_OK);
    trial.Equal("what slot 22 says of a key", present.value, true);
    trial.Equal("what slot 22 says of an absent key", absent.value, false);
    trial.Equal("what HasKey says of a key", named, true);
}

void GetSubMap(Trial& trial)
{
    const auto map = MakeFilledSimpleMap(trial, {"a\\b", "1", "c", "2"});
    const auto numbered =
        Take<ISimpleMap>(trial, "GetSubMap by its number", TVX_S_VALUE,
                         [&](void** out) { return CallISimpleMapGetSubMap(ToC<ISimpleMap>(map), "a", out); });
    ExpectEntries(trial, numbered, "GetSubMap by its number", {"b", "1"});
    Ref<ISimpleMap> named;
    trial.Gives("GetSubMap by its name", map->GetSubMap("a", named.Receive()), TVX_S_VALUE);
    ExpectEntries(trial, named, "GetSubMap by its name", {"b", "1"});
}

void Clone(Trial& trial)
{
    const auto map = MakeFilledSimpleMap(trial, {"key", "text"});
    const auto numbered = Take<ISimpleMap>(trial, "Clone by its number", TVX_OK,
                                           [&](void** out) { return CallISimpleMapClone(ToC<ISimpleMap>(map), out); });
    trial.Expect(numbered.Get() != map.Get(), "Clone to give another map", "the map itself");
    ExpectEntries(trial, numbered, "Clone by its number", {"key", "text"});
    Ref<ISimpleMap> named;
    trial.Gives("Clone by its name", map->Clone(named.Receive()), TVX_OK);
    ExpectEntries(trial, named, "Clone by its name", {"key", "text"});
}

using GetIteratorSlot = int32_t (*)(void* object, void** out);
using GetIteratorByName = Result (ISimpleMap::*)(ISimpleMapIterator** out);

// The two kinds differ in where they go from the first of these keys. The values are the same, so that it does not matter
// here which of them the iterator gives.
void CheckGetIterator(Trial& trial, GetIteratorSlot byNumber, GetIteratorByName byName, const char* second)
{
    const auto map = MakeFilledSimpleMap(trial, {"a", "a", "a\\b", "a\\b", "c", "c"});
    const auto numbered = TakeIterator<ISimpleMapIterator>(
        trial, "the call by its number", [&](void** out) { return byNumber(ToC<ISimpleMap>(map), out); });
    const auto named = Make<ISimpleMapIterator>(trial, "the call by its name",
                                                [&](ISimpleMapIterator** out) { return (map.Get()->*byName)(out); });
    for (const auto& iterator : {numbered, named})
    {
        Need(trial, "Next", iterator->Next() == TVX_OK);
        trial.Equal("the second key of the iterator", iterator->GetKey(), second);
    }
}

void GetIterator(Trial& trial)
{
    CheckGetIterator(trial, &CallISimpleMapGetIterator, &ISimpleMap::GetIterator, "a\\b");
}

void GetIteratorNoSubMaps(Trial& trial)
{
    CheckGetIterator(trial, &CallISimpleMapGetIteratorNoSubMaps, &ISimpleMap::GetIteratorNoSubMaps, "c");
}

constexpr Check Checks[] = {
    {"slot-settings-map-11-set-double", "SetDouble is called by its number.",
     "Slot 11 of ISimpleMap is SetDouble: it keeps a double as its text.", SetDouble},
    {"slot-settings-map-12-set-int", "SetInt is called by its number.",
     "Slot 12 of ISimpleMap is SetInt: it keeps an integer as its decimal text.", SetInt},
    {"slot-settings-map-13-set-string", "SetString is called by its number.",
     "Slot 13 of ISimpleMap is SetString: it keeps a text.", SetString},
    {"slot-settings-map-14-get-double", "GetDouble is called by its number.",
     "Slot 14 of ISimpleMap is GetDouble: it reads a text as a double.", GetDouble},
    {"slot-settings-map-15-get-int", "GetInt is called by its number.",
     "Slot 15 of ISimpleMap is GetInt: it reads a text as an integer of 32 bits.", GetInt},
    {"slot-settings-map-16-get-string", "GetString is called by its number.",
     "Slot 16 of ISimpleMap is GetString: it gives 102 and a new string.", GetString},
    {"slot-settings-map-17-get-iterator", "GetIterator is called by its number.",
     "Slot 17 of ISimpleMap is GetIterator: its iterator visits every entry.", GetIterator},
    {"slot-settings-map-18-get-sub-map", "GetSubMap is called by its number.",
     "Slot 18 of ISimpleMap is GetSubMap: it gives 102 and a new map of the entries below the path.", GetSubMap},
    {"slot-settings-map-19-set-sub-map", "SetSubMap is called by its number.",
     "Slot 19 of ISimpleMap is SetSubMap: it writes the entries of another map below the path.", SetSubMap},
    {"slot-settings-map-22-has-key", "HasKey is called by its number.",
     "Slot 22 of ISimpleMap is HasKey: it tells whether there is an entry of exactly this key.", HasKey},
    {"slot-settings-map-23-clone", "Clone is called by its number.",
     "Slot 23 of ISimpleMap is Clone: it gives a new map of the same entries.", Clone},
    {"slot-settings-map-24-get-iterator-no-sub-maps", "GetIteratorNoSubMaps is called by its number.",
     "Slot 24 of ISimpleMap is GetIteratorNoSubMaps: its iterator skips what is below the entry before.",
     GetIteratorNoSubMaps},
};

}  // namespace

extern const Family SlotsOfSettingsMapFamily = {"slots", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
