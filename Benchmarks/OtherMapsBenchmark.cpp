// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/SettingsMaps.h"

#include <absl/container/btree_map.h>
#include <absl/container/flat_hash_map.h>

#include <cstdlib>

// The settings map beside maps that are made for speed alone: one is sorted but moves its entries, the other has no order.
// They have no goals.
namespace
{

using namespace tvx;
using namespace tvx::bench;

using TreeMap = absl::btree_map<std::string, std::string>;
using HashMap = absl::flat_hash_map<std::string, std::string>;

template <class Map>
const Map& GetFilledOther(std::int64_t size)
{
    static std::map<std::int64_t, Map> made;
    auto& map = made[size];
    for (const auto& key : GetShuffledKeys(size))
        map.emplace(key, ValueText);
    return map;
}

void GetInt(benchmark::State& state, std::int64_t size)
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

template <class Map>
void GetIntOfOther(benchmark::State& state, std::int64_t size)
{
    const auto& map = GetFilledOther<Map>(size);
    KeyCycle keys(size);
    for (auto _ : state)
        benchmark::DoNotOptimize(std::atoi(map.find(keys.Next().c_str())->second.c_str()));
}

Comparison BesideTree(std::int64_t size)
{
    return {.name = "SettingsMap/GetIntBesideTree",
            .size = size,
            .ours = GetInt,
            .peer = "absl::btree_map + atoi",
            .theirs = GetIntOfOther<TreeMap>,
            .bound = Bound::None};
}

Comparison BesideHash(std::int64_t size)
{
    return {.name = "SettingsMap/GetIntBesideHash",
            .size = size,
            .ours = GetInt,
            .peer = "absl::flat_hash_map + atoi",
            .theirs = GetIntOfOther<HashMap>,
            .bound = Bound::None};
}

const Comparisons Rows = {BesideTree(10), BesideTree(1000), BesideTree(100'000),
                          BesideHash(10), BesideHash(1000), BesideHash(100'000)};

}  // namespace
