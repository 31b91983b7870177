// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/MapBench.h"

#include <array>
#include <map>

namespace tvx::check
{

namespace
{

void IsBornEmpty(Trial& trial)
{
    const auto map = MakeMap(trial);
    trial.Equal("the references on a new map", map->GetRefCount(), 1u);
    MissesInMap(trial, *map, "");
    MissesInMap(trial, *map, "key");
}

void GivesBackWhatWasSet(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto map = MakeMap(trial);
    SetInMap(trial, *map, "a", object.Get());
    HasMapReferences(trial, "a value that was set", object, 1);
    FindsInMap(trial, *map, "a", object.Get());
    HasMapReferences(trial, "a value that was looked up and released again", object, 1);
}

void ReleasesAReplacedValueOnce(Trial& trial)
{
    const auto first = MakeRef<ProbeObject>();
    const auto second = MakeRef<ProbeObject>();
    const auto map = MakeMap(trial);
    SetInMap(trial, *map, "a", first.Get());
    SetInMap(trial, *map, "a", second.Get());
    HasMapReferences(trial, "a replaced value", first, 0);
    HasMapReferences(trial, "the value in its place", second, 1);
    FindsInMap(trial, *map, "a", second.Get());
}

void KeepsAValueThatIsSetAgain(Trial& trial)
{
    bool died = false;
    auto object = MakeRef<ProbeObject>(&died);
    ProbeObject* const value = object.Get();
    const auto map = MakeMap(trial);
    SetInMap(trial, *map, "a", value);
    object = nullptr;
    SetInMap(trial, *map, "a", value);
    trial.Equal("the death of a value that is set again under its own key", died, false);
    trial.Equal("the references on a value that was set twice under one key", value->GetRefCount(), 1u);
}

void HoldsANullValueAsPresent(Trial& trial)
{
    const auto map = MakeMap(trial);
    SetInMap(trial, *map, "a", nullptr);
    FindsInMap(trial, *map, "a", nullptr);
}

void ReleasesAValueThatNullReplaces(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto map = MakeMap(trial);
    SetInMap(trial, *map, "a", object.Get());
    SetInMap(trial, *map, "a", nullptr);
    HasMapReferences(trial, "a value that null replaced", object, 0);
    FindsInMap(trial, *map, "a", nullptr);
    SetInMap(trial, *map, "a", object.Get());
    FindsInMap(trial, *map, "a", object.Get());
}

void ReleasesEachValueAtItsDeath(Trial& trial)
{
    const auto shared = MakeRef<ProbeObject>();
    const auto single = MakeRef<ProbeObject>();
    auto map = MakeMap(trial);
    SetInMap(trial, *map, "a", shared.Get());
    SetInMap(trial, *map, "b", shared.Get());
    SetInMap(trial, *map, "c", single.Get());
    SetInMap(trial, *map, "d", nullptr);
    HasMapReferences(trial, "a value under two keys", shared, 2);
    map = nullptr;
    HasMapReferences(trial, "a value under two keys after the map's death", shared, 0);
    HasMapReferences(trial, "a value after the map's death", single, 0);
}

void SharesNothingWithOtherMaps(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto first = MakeMap(trial);
    const auto second = MakeMap(trial);
    trial.Expect(first.Get() != second.Get(), "CreateMap to make a new map each time", "the same one twice");
    SetInMap(trial, *first, "a", object.Get());
    MissesInMap(trial, *second, "a");
}

void RefusesANullOut(Trial& trial)
{
    const auto factory = trial.Get<IMapFactory>(MapExport);
    trial.Gives("CreateMap with a null out", factory->CreateMap(nullptr), TVX_E_POINTER);
}

void AgreesWithAModel(Trial& trial)
{
    const std::array<Ref<ProbeObject>, 4> values = {MakeRef<ProbeObject>(), MakeRef<ProbeObject>(),
                                                    MakeRef<ProbeObject>(), nullptr};
    std::map<std::string, std::size_t> model;
    const auto map = MakeMap(trial);
    for (int write = 0; write < 500; ++write)
    {
        const auto length = trial.GetRandom().Below(4);
        const std::string key(length, static_cast<char>('a' + trial.GetRandom().Below(20)));
        const auto chosen = trial.GetRandom().Below(values.size());
        SetInMap(trial, *map, key.c_str(), values[chosen].Get());
        model[key] = chosen;
    }
    std::array<std::uint32_t, values.size()> places = {};
    for (const auto& [key, chosen] : model)
    {
        FindsInMap(trial, *map, key.c_str(), values[chosen].Get());
        ++places[chosen];
    }
    for (std::size_t index = 0; values[index]; ++index)
        HasMapReferences(trial, "value " + std::to_string(index) + " of many", values[index], places[index]);
}

constexpr Check Checks[] = {
    {"value-map-is-born-empty", "A new map is asked for keys.",
     "CreateMap gives a map without entries, with the one reference that the caller owns.", IsBornEmpty},
    {"value-map-gives-back-what-was-set", "An object is set under a key and looked up.",
     "The map holds one reference on a value; a lookup gives 102, the very object, and one reference for the caller.",
     GivesBackWhatWasSet},
    {"value-map-replaced-value-is-released-once", "Two objects are set under one key.",
     "A second value replaces the first one, on which the map's one reference is released.",
     ReleasesAReplacedValueOnce},
    {"value-map-value-set-again-survives", "An object that only the map holds is set once more under its key.",
     "The new value is taken before the old one is released, so that an object may replace itself.",
     KeepsAValueThatIsSetAgain},
    {"value-map-null-value-is-present", "Null is set under a key.",
     "A null value makes its key present: the lookup gives 102 with a null out.", HoldsANullValueAsPresent},
    {"value-map-null-replaces-a-value", "Null is set under the key of an object.",
     "Null replaces a value as an object does: the old one is released and the key stays present.",
     ReleasesAValueThatNullReplaces},
    {"value-map-death-releases-each-value", "A map with several values is released.",
     "The map holds one reference for each key on its value, and releases each once when it is destroyed.",
     ReleasesEachValueAtItsDeath},
    {"value-map-maps-are-independent", "Two maps are made and one of them is written.",
     "Each CreateMap makes a map of its own, which shares no entries with others.", SharesNothingWithOtherMaps},
    {"value-map-factory-refuses-null-out", "CreateMap is called with a null out.",
     "A null out gives -4 without a report.", RefusesANullOut},
    {"value-map-agrees-with-a-model", "Five hundred random writes are made, and every key is looked up.",
     "After any sequence of writes each key has the value written last, and each value one reference for each key.",
     AgreesWithAModel},
};

}  // namespace

extern const Family ValuesOfMapFamily = {"values", MapExport, Needs::Module, Checks};

}  // namespace tvx::check
