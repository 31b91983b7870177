// SPDX-License-Identifier: MIT
#include "Benchmarks/LoadedModule.h"
#include "Interfaces/ICollection.h"
#include "Interfaces/IMap.h"
#include "Interfaces/IString.h"
#include "Interfaces/IVariant.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::bench;

constexpr int Many = 10000;

using Shared = std::shared_ptr<std::string>;
using PlainMap = std::map<std::string, Shared, std::less<>>;

Ref<ICollection> MakeCollection()
{
    Ref<ICollection> collection;
    GetExport<ICollectionFactory>("com.talvere.general.tvx.GenericCollectionImplementation/1.1")
        ->CreateCollection(collection.Receive());
    return collection;
}

std::vector<Ref<IVariant>> MakeItems(std::int64_t count)
{
    const auto factory = GetExport<IVariantFactory>("com.talvere.general.tvx.GenericVariantImplementation/1.1");
    std::vector<Ref<IVariant>> items(static_cast<std::size_t>(count));
    std::int32_t number = 0;
    for (auto& item : items)
        factory->CreateInt(number++, item.Receive());
    return items;
}

std::vector<Shared> MakeSharedItems(std::int64_t count)
{
    std::vector<Shared> items(static_cast<std::size_t>(count));
    for (auto& item : items)
        item = std::make_shared<std::string>();
    return items;
}

std::vector<std::string> MakeKeys(std::int64_t count)
{
    std::vector<std::string> keys;
    for (std::int64_t number = 0; number < count; ++number)
        keys.push_back("a key of some length " + std::to_string(number));
    return keys;
}

// Whether collection holds the items, as they stand or from behind.
bool Holds(ICollection& collection, std::vector<Ref<IVariant>> items, bool fromBehind)
{
    if (fromBehind)
        std::reverse(items.begin(), items.end());
    bool same = collection.GetCount() == items.size();
    for (std::uint32_t index = 0; same && index < items.size(); ++index)
    {
        Ref<IObject> item;
        same = collection.GetItem(index, item.Receive()) == TVX_OK && item.Get() == items[index].Get();
    }
    return same;
}

void FillCollection(ICollection& collection, const std::vector<Ref<IVariant>>& items, bool atFront)
{
    for (const auto& item : items)
    {
        if (atFront)
            collection.Insert(0, item.Get());
        else
            collection.Add(item.Get());
    }
}

void FillVector(std::vector<Shared>& vector, const std::vector<Shared>& items, bool atFront)
{
    for (const auto& item : items)
        vector.insert(atFront ? vector.begin() : vector.end(), item);
}

// A whole collection each time, from nothing to all items.
void Fill(benchmark::State& state, bool atFront)
{
    const auto items = MakeItems(state.range(0));
    const auto checked = MakeCollection();
    FillCollection(*checked, items, atFront);
    if (!Holds(*checked, items, atFront))
        state.SkipWithError("the collection holds something else");
    for (auto _ : state)
    {
        const auto collection = MakeCollection();
        FillCollection(*collection, items, atFront);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(Fill, Append, false)->Name("Collection/Append")->Arg(100)->Arg(Many);
BENCHMARK_CAPTURE(Fill, InsertAtFront, true)->Name("Collection/InsertAtFront")->Arg(100)->Arg(Many);

void FillPlain(benchmark::State& state, bool atFront)
{
    const auto items = MakeSharedItems(state.range(0));
    for (auto _ : state)
    {
        std::vector<Shared> vector;
        FillVector(vector, items, atFront);
        benchmark::DoNotOptimize(vector.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(FillPlain, Append, false)->Name("Collection/Append/peer:std_vector")->Arg(100)->Arg(Many);
BENCHMARK_CAPTURE(FillPlain, InsertAtFront, true)
    ->Name("Collection/InsertAtFront/peer:std_vector")
    ->Arg(100)
    ->Arg(Many);

// The last item: every place is looked at.
void IndexOf(benchmark::State& state)
{
    const auto items = MakeItems(state.range(0));
    const auto collection = MakeCollection();
    FillCollection(*collection, items, false);
    std::uint32_t index = 0;
    if (collection->IndexOf(items.back().Get(), &index) != TVX_OK || index != items.size() - 1)
        state.SkipWithError("the item stands elsewhere");
    for (auto _ : state)
    {
        collection->IndexOf(items.back().Get(), &index);
        benchmark::DoNotOptimize(index);
    }
}
BENCHMARK(IndexOf)->Name("Collection/IndexOf")->Arg(Many);

void IndexOfPlain(benchmark::State& state)
{
    const auto items = MakeSharedItems(state.range(0));
    const auto vector = items;
    if (std::find(vector.begin(), vector.end(), items.back()) != vector.end() - 1)
        state.SkipWithError("the item stands elsewhere");
    for (auto _ : state)
        benchmark::DoNotOptimize(std::find(vector.begin(), vector.end(), items.back()));
}
BENCHMARK(IndexOfPlain)->Name("Collection/IndexOf/peer:std_vector")->Arg(Many);

// Each value comes with a reference of its own, in both.
void Lookup(benchmark::State& state)
{
    const auto keys = MakeKeys(state.range(0));
    const auto items = MakeItems(state.range(0));
    Ref<IMap> map;
    GetExport<IMapFactory>("com.talvere.general.tvx.GenericMapImplementation/1.1")->CreateMap(map.Receive());
    for (std::size_t number = 0; number < keys.size(); ++number)
        map->SetValue(keys[number].c_str(), items[number].Get());
    Ref<IObject> value;
    if (map->GetValue(keys.back().c_str(), value.Receive()) != TVX_S_VALUE || value.Get() != items.back().Get())
        state.SkipWithError("another value was found");
    std::size_t next = 0;
    for (auto _ : state)
    {
        map->GetValue(keys[next].c_str(), value.Receive());
        next = next + 1 < keys.size() ? next + 1 : 0;
    }
}
BENCHMARK(Lookup)->Name("Dictionary/GetValue")->Arg(10)->Arg(Many);

void LookupPlain(benchmark::State& state)
{
    const auto keys = MakeKeys(state.range(0));
    const auto items = MakeSharedItems(state.range(0));
    PlainMap map;
    for (std::size_t number = 0; number < keys.size(); ++number)
        map[keys[number]] = items[number];
    if (map.find(keys.back().c_str())->second != items.back())
        state.SkipWithError("another value was found");
    Shared value;
    std::size_t next = 0;
    for (auto _ : state)
    {
        value = map.find(keys[next].c_str())->second;
        next = next + 1 < keys.size() ? next + 1 : 0;
    }
}
BENCHMARK(LookupPlain)->Name("Dictionary/GetValue/peer:std_map")->Arg(10)->Arg(Many);

}  // namespace
