// SPDX-License-Identifier: MIT
#include "Benchmarks/LoadedModule.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IString.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <string_view>

namespace
{

using namespace tvx;
using namespace tvx::bench;

constexpr const char StringExport[] = "com.talvere.general.tvx.GenericStringImplementation/1.0";
constexpr const char SettingsMapExport[] = "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1";
constexpr const char Text[] = "exactly 24 bytes of text";
static_assert(sizeof Text == 24 + 1);

Ref<ISimpleMap> MakeMap()
{
    Ref<IObjectBase> object;
    GetExport<IFactory>(SettingsMapExport)->Create(object.Receive());
    return Query<ISimpleMap>(object);
}

void MakeString(benchmark::State& state)
{
    const auto factory = GetExport<IStringFactory>(StringExport);
    Ref<IString> string;
    factory->CreateString(Text, string.Receive());
    if (string->GetText() != std::string_view(Text))
        state.SkipWithError("the string has another text");
    for (auto _ : state)
        factory->CreateString(Text, string.Receive());
}
BENCHMARK(MakeString)->Name("String/Make/24");

void MakeSharedString(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(std::make_shared<const std::string>(Text));
}
BENCHMARK(MakeSharedString)->Name("String/Make/24/peer:make_shared");

void CopyReference(benchmark::State& state)
{
    const auto map = MakeMap();
    for (auto _ : state)
        benchmark::DoNotOptimize(Ref<ISimpleMap>(map));
    if (!map->IsUnique())
        state.SkipWithError("a reference was left behind");
}
BENCHMARK(CopyReference)->Name("Object/AddRefAndRelease");

void CopySharedPointer(benchmark::State& state)
{
    const auto shared = std::make_shared<std::string>();
    for (auto _ : state)
        benchmark::DoNotOptimize(std::shared_ptr<std::string>(shared));
}
BENCHMARK(CopySharedPointer)->Name("Object/AddRefAndRelease/peer:shared_ptr");

void QueryInterface(benchmark::State& state)
{
    const auto map = MakeMap();
    for (auto _ : state)
        benchmark::DoNotOptimize(Query<IObject>(map));
}
BENCHMARK(QueryInterface)->Name("Object/Query/IObject");

}  // namespace
