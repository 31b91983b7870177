// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/MapBench.h"

#include <vector>

namespace tvx::check
{

namespace
{

void LooksUpAlikeByBothOperations(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto map = MakeMap(trial);
    SetInMap(trial, *map, "a", object.Get());
    SetInMap(trial, *map, "null", nullptr);
    for (const auto lookUp : {&IMap::GetValue, &IMap::LookupValue})
    {
        FindsInMap(trial, *map, "a", object.Get(), lookUp);
        FindsInMap(trial, *map, "null", nullptr, lookUp);
        MissesInMap(trial, *map, "absent", lookUp);
    }
}

void EmptiesOutForAnAbsentKey(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto map = MakeMap(trial);
    SetInMap(trial, *map, "key", object.Get());
    for (const char* const absent : {"", "ke", "keys", "KEY", "key ", "l"})
        MissesInMap(trial, *map, absent);
    FindsInMap(trial, *map, "key", object.Get());
}

void TakesANullKeyAsAbsent(Trial& trial)
{
    const auto map = MakeMap(trial);
    SetInMap(trial, *map, "", nullptr);
    for (const auto lookUp : {&IMap::GetValue, &IMap::LookupValue})
        MissesInMap(trial, *map, nullptr, lookUp);
}

void TakesTheEmptyKey(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto map = MakeMap(trial);
    SetInMap(trial, *map, "", object.Get());
    FindsInMap(trial, *map, "", object.Get());
    MissesInMap(trial, *map, "a");
}

void TellsKeysApartByEveryByte(Trial& trial)
{
    const std::string shared(1000, 'k');
    const std::vector<std::string> keys = {"a",        "A",    "ab",         "a ",        "\xE4",
                                           "\xC3\xA4", shared, shared + "1", shared + "2"};
    std::vector<Ref<ProbeObject>> values;
    const auto map = MakeMap(trial);
    for (const auto& key : keys)
        SetInMap(trial, *map, key.c_str(), values.emplace_back(MakeRef<ProbeObject>()).Get());
    for (std::size_t index = 0; index < keys.size(); ++index)
        FindsInMap(trial, *map, keys[index].c_str(), values[index].Get());
}

void CopiesItsKeys(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto map = MakeMap(trial);
    std::string key = "key";
    SetInMap(trial, *map, key.c_str(), object.Get());
    key = "yek";
    FindsInMap(trial, *map, "key", object.Get());
    MissesInMap(trial, *map, "yek");
}

constexpr Check Checks[] = {
    {"value-map-lookups-are-alike", "GetValue and LookupValue are asked for the same keys.",
     "Both lookups give the same codes, objects and references: callers of either slot rely on it.",
     LooksUpAlikeByBothOperations},
    {"value-map-absent-key-empties-out", "Keys near to one that is present are looked up.",
     "The lookup of an absent key gives 101, which is no failure, and writes null to out.", EmptiesOutForAnAbsentKey},
    {"value-map-null-key-is-absent", "A null key is looked up.",
     "A null key counts as absent: 101 and a null out, without a report, even where the empty key is present.",
     TakesANullKeyAsAbsent},
    {"value-map-empty-key-is-a-key", "An object is set under the empty key.", "The empty text is a key like any other.",
     TakesTheEmptyKey},
    {"value-map-keys-differ-by-any-byte", "Keys that differ in case, length, a space or a byte above 127 are set.",
     "Keys are compared byte by byte to their end, without regard to case, locale or encoding.",
     TellsKeysApartByEveryByte},
    {"value-map-copies-its-keys", "The text of a key is overwritten after SetValue.",
     "The map owns a copy of each key: the caller's text is only borrowed for the call.", CopiesItsKeys},
};

}  // namespace

extern const Family KeysOfMapFamily = {"values", MapExport, Needs::Module, Checks};

}  // namespace tvx::check
