// SPDX-License-Identifier: MIT
#include "Benchmarks/LoadedModule.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISimpleMap.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::bench;

using PlainMap = std::map<std::string, std::string, std::less<>>;

std::vector<std::string> MakeKeys(std::int64_t count)
{
    std::vector<std::string> keys;
    for (std::int64_t number = 0; number < count; ++number)
        keys.push_back("Section" + std::to_string(number % 10) + "\\Key" + std::to_string(number));
    return keys;
}

Ref<ISimpleMap> MakeFilledMap(const std::vector<std::string>& keys)
{
    Ref<IObjectBase> object;
    GetExport<IFactory>("com.talvere.general.tvx.GenericSimpleMapImplementation/1.1")->Create(object.Receive());
    auto map = Query<ISimpleMap>(object);
    for (const auto& key : keys)
        map->SetInt(key.c_str(), 42);
    return map;
}

PlainMap MakeFilledPlainMap(const std::vector<std::string>& keys)
{
    PlainMap map;
    for (const auto& key : keys)
        map[key] = "42";
    return map;
}

void GetInt(benchmark::State& state)
{
    const auto keys = MakeKeys(state.range(0));
    const auto map = MakeFilledMap(keys);
    std::int32_t sum = 0;
    std::size_t next = 0;
    for (auto _ : state)
    {
        std::int32_t value = 0;
        map->GetInt(keys[next].c_str(), &value);
        sum |= value;
        next = next + 1 < keys.size() ? next + 1 : 0;
    }
    if (sum != 42)
        state.SkipWithError("another value was read");
}
BENCHMARK(GetInt)->Name("SettingsMap/GetInt")->Arg(10)->Arg(1000)->Arg(100000);

void GetIntOfPlainMap(benchmark::State& state)
{
    const auto keys = MakeKeys(state.range(0));
    const auto map = MakeFilledPlainMap(keys);
    std::size_t next = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(std::atoi(map.find(keys[next].c_str())->second.c_str()));
        next = next + 1 < keys.size() ? next + 1 : 0;
    }
}
BENCHMARK(GetIntOfPlainMap)->Name("SettingsMap/GetInt/peer:std_map")->Arg(10)->Arg(1000)->Arg(100000);

void SetDouble(benchmark::State& state)
{
    const auto keys = MakeKeys(state.range(0));
    const auto map = MakeFilledMap(keys);
    double value = 0.0;
    for (auto _ : state)
        map->SetDouble(keys.back().c_str(), value += 0.125);
    double read = 0.0;
    if (map->GetDouble(keys.back().c_str(), &read) != TVX_OK)
        state.SkipWithError("nothing was written");
}
BENCHMARK(SetDouble)->Name("SettingsMap/SetDouble")->Arg(1000);

void SetDoubleOfPlainMap(benchmark::State& state)
{
    const auto keys = MakeKeys(state.range(0));
    auto map = MakeFilledPlainMap(keys);
    double value = 0.0;
    for (auto _ : state)
    {
        char text[108];
        std::snprintf(text, sizeof text, "%Lg", static_cast<long double>(value += 0.125));
        map.find(keys.back().c_str())->second = text;
    }
}
BENCHMARK(SetDoubleOfPlainMap)->Name("SettingsMap/SetDouble/peer:std_map")->Arg(1000);

// The cost of what is taken, whatever the size of the map: ten entries each time.
void GetSubMap(benchmark::State& state)
{
    const auto keys = MakeKeys(state.range(0));
    const auto map = MakeFilledMap(keys);
    for (int number = 0; number < 10; ++number)
        map->SetInt(("Wanted\\" + std::to_string(number)).c_str(), number);
    Ref<ISimpleMap> below;
    for (auto _ : state)
        map->GetSubMap("Wanted", below.Receive());
    bool last = false;
    below->HasKey("9", &last);
    if (!last)
        state.SkipWithError("an entry is missing");
}
BENCHMARK(GetSubMap)->Name("SettingsMap/GetSubMap")->Arg(1000)->Arg(100000);

}  // namespace
