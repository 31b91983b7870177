// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/LoadedModule.h"
#include "Interfaces/IMap.h"
#include "Interfaces/IVariant.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::bench;

using Shared = std::shared_ptr<std::int32_t>;
using PlainMap = std::map<std::string, Shared, std::less<>>;

std::vector<std::string> MakeKeys(std::int64_t count)
{
    std::vector<std::string> keys;
    for (std::int64_t number = 0; number < count; ++number)
        keys.push_back("a key of some length " + std::to_string(number));
    return keys;
}

// Looks up one key of many after the other.
template <class LookUp>
void ForKeys(benchmark::State& state, const std::vector<std::string>& keys, LookUp lookUp)
{
    std::size_t next = 0;
    for (auto _ : state)
    {
        lookUp(keys[next].c_str());
        next = next + 1 < keys.size() ? next + 1 : 0;
    }
}

// Each value comes with a reference of its own, in both.
void GetValue(benchmark::State& state, std::int64_t size)
{
    const auto keys = MakeKeys(size);
    const auto factory = GetExport<IVariantFactory>("com.talvere.general.tvx.GenericVariantImplementation/1.1");
    Ref<IMap> map;
    GetExport<IMapFactory>("com.talvere.general.tvx.GenericMapImplementation/1.1")->CreateMap(map.Receive());
    Ref<IVariant> item;
    for (const auto& key : keys)
    {
        factory->CreateInt(0, item.Receive());
        map->SetValue(key.c_str(), item.Get());
    }
    Ref<IObject> value;
    if (map->GetValue(keys.back().c_str(), value.Receive()) != TVX_S_VALUE || value.Get() != item.Get())
        state.SkipWithError("another value was found");
    ForKeys(state, keys, [&](const char* key) { map->GetValue(key, value.Receive()); });
}

void FindInMap(benchmark::State& state, std::int64_t size)
{
    const auto keys = MakeKeys(size);
    PlainMap map;
    for (const auto& key : keys)
        map[key] = std::make_shared<std::int32_t>(0);
    Shared value;
    ForKeys(state, keys, [&](const char* key) { value = map.find(key)->second; });
}

Comparison MakeGetValue(std::int64_t size)
{
    return {.name = "Dictionary/GetValue",
            .size = size,
            .ours = GetValue,
            .peer = "std::map of std::shared_ptr",
            .theirs = FindInMap,
            .bound = Bound::None};
}

const Comparisons Rows = {MakeGetValue(10), MakeGetValue(10000)};

}  // namespace
