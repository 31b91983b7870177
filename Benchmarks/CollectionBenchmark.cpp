// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/LoadedModule.h"
#include "Interfaces/ICollection.h"
#include "Interfaces/IVariant.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>
#include <gio/gio.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <variant>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::bench;

using Value = std::variant<std::int32_t, double, std::string>;
using Shared = std::shared_ptr<Value>;

struct Counted : boost::intrusive_ref_counter<Counted, boost::thread_safe_counter>
{
    Value value;
};
using Intrusive = boost::intrusive_ptr<Counted>;

struct Unref
{
    void operator()(void* object) const { g_object_unref(object); }
};
using Store = std::unique_ptr<GListStore, Unref>;
using StoreItem = std::unique_ptr<GObject, Unref>;

// Longer lists hold the same items again and again: nothing that is measured here depends on it.
constexpr std::size_t Distinct = 10000;

constexpr std::uint32_t NoIndex = 0xFFFFFFFF;

Ref<ICollection> MakeCollection()
{
    static const auto factory =
        GetExport<ICollectionFactory>("com.talvere.general.tvx.GenericCollectionImplementation/1.1");
    Ref<ICollection> collection;
    factory->CreateCollection(collection.Receive());
    return collection;
}

Ref<IVariant> MakeItem(std::int32_t number)
{
    static const auto factory = GetExport<IVariantFactory>("com.talvere.general.tvx.GenericVariantImplementation/1.1");
    Ref<IVariant> item;
    factory->CreateInt(number, item.Receive());
    return item;
}

Shared MakeShared(std::int32_t number)
{
    return std::make_shared<Value>(number);
}

Intrusive MakeIntrusive(std::int32_t number)
{
    Intrusive item(new Counted);
    item->value = number;
    return item;
}

// One item for each place; they live until the end, since some stand in lists that do.
template <class Item>
std::vector<Item> MakeItems(Item (*make)(std::int32_t), std::int64_t count)
{
    static std::vector<Item> distinct;
    while (distinct.size() < Distinct)
        distinct.push_back(make(static_cast<std::int32_t>(distinct.size())));
    std::vector<Item> items;
    for (std::size_t place = 0; place < static_cast<std::size_t>(count); ++place)
        items.push_back(distinct[place % Distinct]);
    return items;
}

Ref<ICollection> MakeFilledCollection(std::int64_t size)
{
    auto collection = MakeCollection();
    for (const auto& item : MakeItems(MakeItem, size))
        collection->Add(item.Get());
    return collection;
}

std::vector<Shared> MakeFilledVector(std::int64_t size)
{
    return MakeItems(MakeShared, size);
}

Store MakeFilledStore(std::int64_t size)
{
    Store store(g_list_store_new(G_TYPE_OBJECT));
    const StoreItem item(G_OBJECT(g_object_new(G_TYPE_OBJECT, nullptr)));
    for (std::int64_t place = 0; place < size; ++place)
        g_list_store_append(store.get(), item.get());
    return store;
}

// The list of a size, made once: that takes longer than all that is done with it.
template <class List>
List& GetFilled(List (*make)(std::int64_t), std::int64_t size)
{
    static std::map<std::int64_t, List> lists;
    const auto found = lists.find(size);
    return found != lists.end() ? found->second : lists.emplace(size, make(size)).first->second;
}

// Places spread over all of the list, the same in each run.
std::vector<std::uint32_t> MakePlaces(std::int64_t size)
{
    std::mt19937 random(20261121);
    std::vector<std::uint32_t> places(4096);
    for (auto& place : places)
        place = static_cast<std::uint32_t>(random() % static_cast<std::uint64_t>(size));
    return places;
}

std::vector<std::uint32_t> MakeAllPlaces(std::int64_t size)
{
    std::vector<std::uint32_t> places;
    for (std::uint32_t place = 0; place < static_cast<std::uint32_t>(size); ++place)
        places.push_back(place);
    return places;
}

std::vector<std::uint32_t> MakeMiddle(std::int64_t size)
{
    return {static_cast<std::uint32_t>(size / 2)};
}

// Calls work with one place an iteration, one after the other, and from the beginning again.
template <class DoWork>
void ForPlaces(benchmark::State& state, const std::vector<std::uint32_t>& places, DoWork work)
{
    std::size_t next = 0;
    for (auto _ : state)
    {
        work(places[next]);
        next = next + 1 < places.size() ? next + 1 : 0;
    }
}

using ChoosePlaces = std::vector<std::uint32_t> (*)(std::int64_t size);

// The item with a reference of its own, in both.
template <ChoosePlaces choose>
void GetItem(benchmark::State& state, std::int64_t size)
{
    const auto collection = MakeFilledCollection(size);
    Ref<IObject> last;
    const auto index = static_cast<std::uint32_t>(size - 1);
    if (collection->GetItem(index, last.Receive()) != TVX_OK || last.Get() != MakeItems(MakeItem, size).back().Get())
        state.SkipWithError("another item was given");
    ForPlaces(state, choose(size),
              [&](std::uint32_t place)
              {
                  Ref<IObject> item;
                  collection->GetItem(place, item.Receive());
                  benchmark::DoNotOptimize(item);
              });
}

template <ChoosePlaces choose>
void CopyShared(benchmark::State& state, std::int64_t size)
{
    const auto vector = MakeFilledVector(size);
    ForPlaces(state, choose(size),
              [&](std::uint32_t place)
              {
                  Shared item = vector[place];
                  benchmark::DoNotOptimize(item);
              });
}

// A whole list, from nothing to all items, and its end.
template <bool atFront>
void Fill(benchmark::State& state, std::int64_t size)
{
    const auto items = MakeItems(MakeItem, size);
    Ref<IObject> first;
    for (auto _ : state)
    {
        const auto collection = MakeCollection();
        for (const auto& item : items)
            atFront ? collection->Insert(0, item.Get()) : collection->Add(item.Get());
        if (collection->GetCount() != items.size() || collection->GetItem(0, first.Receive()) != TVX_OK ||
            first.Get() != (atFront ? items.back() : items.front()).Get())
            state.SkipWithError("the collection holds something else");
    }
}

template <bool atFront>
void FillVector(benchmark::State& state, std::int64_t size)
{
    const auto items = MakeItems(MakeIntrusive, size);
    Intrusive first;
    for (auto _ : state)
    {
        std::vector<Intrusive> vector;
        for (const auto& item : items)
            atFront ? static_cast<void>(vector.insert(vector.begin(), item)) : vector.push_back(item);
        first = vector.front();
        benchmark::DoNotOptimize(vector.data());
    }
}

template <ChoosePlaces choose>
void InsertAndRemove(benchmark::State& state, std::int64_t size)
{
    auto& collection = GetFilled(MakeFilledCollection, size);
    const auto item = MakeItem(-1);
    ForPlaces(state, choose(size),
              [&](std::uint32_t place)
              {
                  collection->Insert(place, item.Get());
                  collection->RemoveAt(place);
              });
    if (collection->GetCount() != static_cast<std::uint32_t>(size) || !item->IsUnique())
        state.SkipWithError("the item was left behind");
}

template <ChoosePlaces choose>
void InsertAndEraseShared(benchmark::State& state, std::int64_t size)
{
    auto& vector = GetFilled(MakeFilledVector, size);
    const auto item = MakeShared(-1);
    ForPlaces(state, choose(size),
              [&](std::uint32_t place)
              {
                  vector.insert(vector.begin() + place, item);
                  vector.erase(vector.begin() + place);
              });
    if (item.use_count() != 1)
        state.SkipWithError("the item was left behind");
}

template <ChoosePlaces choose>
void InsertAndRemoveInStore(benchmark::State& state, std::int64_t size)
{
    auto* const store = GetFilled(MakeFilledStore, size).get();
    const StoreItem item(G_OBJECT(g_object_new(G_TYPE_OBJECT, nullptr)));
    ForPlaces(state, choose(size),
              [&](std::uint32_t place)
              {
                  g_list_store_insert(store, place, item.get());
                  g_list_store_remove(store, place);
              });
    if (g_list_model_get_n_items(G_LIST_MODEL(store)) != static_cast<guint>(size))
        state.SkipWithError("the item was left behind");
}

// Every place is looked at.
void IndexOfAbsent(benchmark::State& state, std::int64_t size)
{
    auto& collection = GetFilled(MakeFilledCollection, size);
    const auto absent = MakeItem(-1);
    std::uint32_t index = 0;
    if (collection->IndexOf(absent.Get(), &index) != TVX_E_FAIL || index != NoIndex)
        state.SkipWithError("the item is there");
    for (auto _ : state)
    {
        collection->IndexOf(absent.Get(), &index);
        benchmark::DoNotOptimize(index);
    }
}

void FindAbsent(benchmark::State& state, std::int64_t size)
{
    const auto& vector = GetFilled(MakeFilledVector, size);
    const auto absent = MakeShared(-1);
    if (std::find(vector.begin(), vector.end(), absent) != vector.end())
        state.SkipWithError("the item is there");
    for (auto _ : state)
        benchmark::DoNotOptimize(std::find(vector.begin(), vector.end(), absent));
}

// A flat array behind the same calls comes to 1.07: items that are mostly unshared look first whether they are alone when
// they are released.
Comparison MakeGetItem(std::int64_t size)
{
    return {.name = "Collection/GetItem",
            .size = size,
            .ours = GetItem<MakeAllPlaces>,
            .peer = "copy of a std::shared_ptr",
            .theirs = CopyShared<MakeAllPlaces>,
            .goal = 1.0,
            .limit = 1.3};
}

// The same holds for the end of the list, which releases all items.
Comparison MakeAppend(std::int64_t size, Bound bound = Bound::Ratio)
{
    return {.name = "Collection/Append",
            .size = size,
            .ours = Fill<false>,
            .peer = "std::vector of boost::intrusive_ptr",
            .theirs = FillVector<false>,
            .goal = 1.4,
            .bound = bound,
            .limit = 1.55};
}

Comparison MakeInsertAndRemove(std::int64_t size, double goal)
{
    return {.name = "Collection/InsertAndRemove",
            .size = size,
            .ours = InsertAndRemove<MakeMiddle>,
            .peer = "std::vector of std::shared_ptr",
            .theirs = InsertAndEraseShared<MakeMiddle>,
            .goal = goal};
}

Comparison MakeIndexOf(std::int64_t size)
{
    return {.name = "Collection/IndexOfAbsent",
            .size = size,
            .ours = IndexOfAbsent,
            .peer = "std::find in a std::vector of std::shared_ptr",
            .theirs = FindAbsent,
            .goal = 0.85};
}

const Comparisons Rows = {
    MakeGetItem(1000),
    MakeGetItem(100000),
    {.name = "Collection/GetItemAnywhere",
     .size = 1000000,
     .ours = GetItem<MakePlaces>,
     .peer = "copy of a std::shared_ptr",
     .theirs = CopyShared<MakePlaces>,
     .bound = Bound::None},
    MakeAppend(10, Bound::None),
    MakeAppend(1000),
    MakeAppend(100000),
    {.name = "Collection/InsertAtFront",
     .size = 10000,
     .ours = Fill<true>,
     .peer = "std::vector of boost::intrusive_ptr",
     .theirs = FillVector<true>,
     .bound = Bound::None},
    MakeInsertAndRemove(1000, 0.3),
    MakeInsertAndRemove(1000000, 0.01),
    {.name = "Collection/InsertAndRemoveBesideStore",
     .size = 1000000,
     .ours = InsertAndRemove<MakeMiddle>,
     .peer = "GListStore",
     .theirs = InsertAndRemoveInStore<MakeMiddle>,
     .goal = 0.75},
    {.name = "Collection/InsertAndRemoveAnywhere",
     .size = 1000000,
     .ours = InsertAndRemove<MakePlaces>,
     .peer = "GListStore",
     .theirs = InsertAndRemoveInStore<MakePlaces>,
     .bound = Bound::None},
    MakeIndexOf(1000),
    MakeIndexOf(10000),
    MakeIndexOf(1000000),
};

}  // namespace
