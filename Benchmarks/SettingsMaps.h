// SPDX-License-Identifier: MIT
#pragma once

#include "Benchmarks/LoadedModule.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISimpleMap.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

// Settings maps and plain maps with the same entries, made once for all rows of a size.
namespace tvx::bench
{

using PlainMap = std::map<std::string, std::string, std::less<>>;
using Keys = std::vector<std::string>;

constexpr char ValueText[] = "1920";

// Paths such as settings have, in byte order.
inline Keys MakeSortedKeys(std::int64_t size)
{
    Keys keys;
    for (std::int64_t number = 0; number < size; ++number)
        keys.push_back("Section" + std::to_string(number % 10) + "\\Key" + std::to_string(number));
    std::sort(keys.begin(), keys.end());
    return keys;
}

inline const Keys& GetSortedKeys(std::int64_t size)
{
    static std::map<std::int64_t, Keys> made;
    auto& keys = made[size];
    if (keys.empty())
        keys = MakeSortedKeys(size);
    return keys;
}

inline const Keys& GetShuffledKeys(std::int64_t size)
{
    static std::map<std::int64_t, Keys> made;
    auto& keys = made[size];
    if (!keys.empty())
        return keys;
    keys = MakeSortedKeys(size);
    std::shuffle(keys.begin(), keys.end(), std::mt19937_64(7013));
    return keys;
}

// The order in which they are asked for is another one than that in which maps are filled: else what was put one behind the
// other would be read one behind the other. The last copy puts their own texts one behind the other, as those of a program are.
inline const Keys& GetKeysInUse(std::int64_t size)
{
    static std::map<std::int64_t, Keys> made;
    auto& keys = made[size];
    if (!keys.empty())
        return keys;
    auto shuffled = GetShuffledKeys(size);
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937_64(1987));
    keys = shuffled;
    return keys;
}

// Walks through the keys of a map.
class KeyCycle
{
public:
    explicit KeyCycle(std::int64_t size) : keys_(GetKeysInUse(size)) {}

    const std::string& Next() noexcept
    {
        const auto& key = keys_[next_];
        next_ = next_ + 1 < keys_.size() ? next_ + 1 : 0;
        return key;
    }

private:
    const Keys& keys_;
    std::size_t next_ = 0;
};

inline Ref<ISimpleMap> MakeFilledMap(const Keys& keys)
{
    static const auto factory = GetExport<IFactory>("com.talvere.general.tvx.GenericSimpleMapImplementation/1.1");
    Ref<IObjectBase> object;
    factory->Create(object.Receive());
    auto map = Query<ISimpleMap>(object);
    for (const auto& key : keys)
        map->SetString(key.c_str(), ValueText);
    return map;
}

inline PlainMap MakeFilledPlainMap(const Keys& keys)
{
    PlainMap map;
    for (const auto& key : keys)
        map.insert_or_assign(key, ValueText);
    return map;
}

// Filled in random order, as a program does that sets what it needs.
inline ISimpleMap& GetFilledMap(std::int64_t size)
{
    static std::map<std::int64_t, Ref<ISimpleMap>> made;
    auto& map = made[size];
    if (!map)
        map = MakeFilledMap(GetShuffledKeys(size));
    return *map;
}

inline Ref<ISimpleMap> CloneFilledMap(std::int64_t size)
{
    Ref<ISimpleMap> clone;
    GetFilledMap(size).Clone(clone.Receive());
    return clone;
}

inline const PlainMap& GetFilledPlainMap(std::int64_t size)
{
    static std::map<std::int64_t, PlainMap> made;
    auto& map = made[size];
    if (map.empty())
        map = MakeFilledPlainMap(GetShuffledKeys(size));
    return map;
}

// Reads integers, the last of which is looked at.
inline void GetInts(benchmark::State& state, std::int64_t size)
{
    auto& map = GetFilledMap(size);
    KeyCycle keys(size);
    std::int32_t value = 0;
    for (auto _ : state)
    {
        map.GetInt(keys.Next().c_str(), &value);
        benchmark::DoNotOptimize(value);
    }
    if (value != std::atoi(ValueText))
        state.SkipWithError("another number was read");
}

// The same with a map of the standard library's kind that has the same entries.
template <class Map>
void GetIntsOfOther(benchmark::State& state, const Map& map, std::int64_t size)
{
    KeyCycle keys(size);
    for (auto _ : state)
        benchmark::DoNotOptimize(std::atoi(map.find(keys.Next().c_str())->second.c_str()));
}

}  // namespace tvx::bench
