// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/SettingsMaps.h"

#include <absl/container/btree_map.h>
#include <absl/container/flat_hash_map.h>

#include <string>
#include <vector>

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

template <class Map>
void GetIntOfOther(benchmark::State& state, std::int64_t size)
{
    GetIntsOfOther(state, GetFilledOther<Map>(size), size);
}

template <class Map>
Comparison GetIntBeside(const std::string& other, const std::string& peer, std::int64_t size)
{
    return {.name = "SettingsMap/GetIntBeside" + other,
            .size = size,
            .ours = GetInts,
            .peer = peer + " + atoi",
            .theirs = GetIntOfOther<Map>,
            .bound = Bound::None};
}

std::vector<Comparison> MakeRows()
{
    std::vector<Comparison> rows;
    for (const std::int64_t size : {10, 1000, 100'000})
    {
        rows.push_back(GetIntBeside<TreeMap>("Tree", "absl::btree_map", size));
        rows.push_back(GetIntBeside<HashMap>("Hash", "absl::flat_hash_map", size));
    }
    return rows;
}

const Comparisons Rows = MakeRows();

}  // namespace
