// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/LoadedModule.h"
#include "Helpers/BatchUpdate.h"
#include "Helpers/Ranges.h"
#include "Helpers/Reading.h"
#include "Helpers/Subscription.h"
#include "Interfaces/IFactory.h"

#include <charconv>
#include <cstring>
#include <string>
#include <system_error>
#include <vector>

// Each helper for authors beside the calls that it stands for, as one would write them by hand.
namespace
{

using namespace tvx;
using namespace tvx::bench;

constexpr std::int64_t Many = 1000;
constexpr std::int32_t Number = 42;

std::vector<std::string> MakeKeys(std::int64_t count)
{
    std::vector<std::string> keys;
    for (std::int64_t number = 0; number < count; ++number)
        keys.push_back("Section" + std::to_string(number % 10) + "\\Key" + std::to_string(number));
    return keys;
}

Ref<ISimpleMap> MakeMap(const std::vector<std::string>& keys = {})
{
    Ref<IObjectBase> object;
    GetExport<IFactory>("com.talvere.general.tvx.GenericSimpleMapImplementation/1.1")->Create(object.Receive());
    auto map = Query<ISimpleMap>(object);
    for (const auto& key : keys)
        map->SetInt(key.c_str(), Number);
    map->SetBatchUpdatingMode(false);
    return map;
}

// Empty maps as items, or as user data.
Ref<ICollection> MakeCollection(std::int64_t count)
{
    Ref<ICollection> collection;
    GetExport<ICollectionFactory>("com.talvere.general.tvx.GenericCollectionImplementation/1.1")
        ->CreateCollection(collection.Receive());
    for (std::int64_t number = 0; number < count; ++number)
        collection->Add(MakeMap().Get());
    return collection;
}

Ref<IUserDataContainer> MakeContainer(std::int64_t count)
{
    auto container = Query<IUserDataContainer>(MakeMap());
    for (const auto& name : MakeKeys(count))
        container->SetUserData(name.c_str(), MakeMap().Get());
    return container;
}

// What read gives for one key of many after the other.
using ReadKey = std::int32_t (*)(ISimpleMap& map, const char* key);

template <ReadKey read>
void ReadKeys(benchmark::State& state, std::int64_t size)
{
    const auto keys = MakeKeys(size);
    const auto map = MakeMap(keys);
    if (read(*map, keys.back().c_str()) != Number || read(*map, "absent") != 0)
        state.SkipWithError("another value was read");
    std::size_t next = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(read(*map, keys[next].c_str()));
        next = next + 1 < keys.size() ? next + 1 : 0;
    }
}

std::int32_t ReadInt(ISimpleMap& map, const char* key)
{
    return Read<std::int32_t>(map, key).ValueOr(0);
}

std::int32_t ReadIntByHand(ISimpleMap& map, const char* key)
{
    Ref<IString> text;
    if (map.GetString(key, text.Receive()) != TVX_S_VALUE)
        return 0;
    const char* const begin = text->GetText();
    const char* const end = begin + text->GetLength();
    std::int32_t value = 0;
    const auto parsed = std::from_chars(begin, end, value);
    return parsed.ec == std::errc() && parsed.ptr == end ? value : 0;
}

// A whole walk over many each time; count tells how many it came by.
template <class Container>
void Walk(benchmark::State& state, std::int64_t size, Container& container, std::size_t (*count)(Container&))
{
    if (count(container) != static_cast<std::size_t>(size))
        state.SkipWithError("the walk left something out");
    for (auto _ : state)
        benchmark::DoNotOptimize(count(container));
}

std::size_t CountEntries(ISimpleMap& map)
{
    std::size_t count = 0;
    for (const auto [key, value] : Entries(map))
        count += *key != '\0' && *value != '\0' ? 1 : 0;
    return count;
}

std::size_t CountEntriesByHand(ISimpleMap& map)
{
    std::size_t count = 0;
    Ref<ISimpleMapIterator> iterator;
    if (TVX_FAILED(map.GetIterator(iterator.Receive())))
        return 0;
    for (const char* key = iterator->GetKey(); key != nullptr; iterator->Next(), key = iterator->GetKey())
        count += *key != '\0' && *iterator->GetValue() != '\0' ? 1 : 0;
    return count;
}

template <std::size_t (*count)(ISimpleMap&)>
void WalkEntries(benchmark::State& state, std::int64_t size)
{
    Walk(state, size, *MakeMap(MakeKeys(size)), count);
}

std::size_t CountItems(ICollection& collection)
{
    std::size_t count = 0;
    for (const auto& item : Items(collection))
        count += item ? 1 : 0;
    return count;
}

std::size_t CountItemsByHand(ICollection& collection)
{
    std::size_t count = 0;
    for (std::uint32_t index = 0; index < collection.GetCount(); ++index)
    {
        Ref<IObject> item;
        collection.GetItem(index, item.Receive());
        count += item ? 1 : 0;
    }
    return count;
}

std::size_t CountItemsAs(ICollection& collection)
{
    std::size_t count = 0;
    for (const auto& map : ItemsAs<ISimpleMap>(collection))
        count += map ? 1 : 0;
    return count;
}

std::size_t CountItemsAsByHand(ICollection& collection)
{
    std::size_t count = 0;
    for (std::uint32_t index = 0; index < collection.GetCount(); ++index)
    {
        Ref<IObject> item;
        collection.GetItem(index, item.Receive());
        count += Query<ISimpleMap>(item) ? 1 : 0;
    }
    return count;
}

template <std::size_t (*count)(ICollection&)>
void WalkItems(benchmark::State& state, std::int64_t size)
{
    Walk(state, size, *MakeCollection(size), count);
}

std::size_t CountUserData(IUserDataContainer& container)
{
    std::size_t count = 0;
    for (const auto& [name, object] : UserData(container))
        count += *name != '\0' && object ? 1 : 0;
    return count;
}

std::size_t CountUserDataByHand(IUserDataContainer& container)
{
    std::size_t count = 0;
    Ref<IUserDataIterator> iterator;
    if (TVX_FAILED(container.CreateUserDataIterator(iterator.Receive())))
        return 0;
    for (; !iterator->IsEnd(); iterator->Next())
    {
        const char* const name = iterator->GetKey();
        Ref<IObjectBase> object;
        iterator->GetObject(object.Receive());
        count += *name != '\0' && object ? 1 : 0;
    }
    return count;
}

template <std::size_t (*count)(IUserDataContainer&)>
void WalkUserData(benchmark::State& state, std::int64_t size)
{
    Walk(state, size, *MakeContainer(size), count);
}

// There and back: the mode on, and the one before restored on a map that lives until then.
template <void (*switchThereAndBack)(ISimpleMap&)>
void SwitchMode(benchmark::State& state, std::int64_t)
{
    const auto map = MakeMap();
    switchThereAndBack(*map);
    bool mode = true;
    if (TVX_FAILED(map->GetBatchUpdatingMode(&mode)) || mode)
        state.SkipWithError("the mode was not restored");
    for (auto _ : state)
        switchThereAndBack(*map);
}

void SwitchByGuard(ISimpleMap& map)
{
    const BatchUpdate batch(map);
}

void SwitchByHand(ISimpleMap& map)
{
    const Ref<ISimpleMap> kept(&map);
    bool before = false;
    map.GetBatchUpdatingMode(&before);
    map.SetBatchUpdatingMode(true);
    map.SetBatchUpdatingMode(before);
}

// What one writes without the helper: a handler class of one's own, which learns of the sender's death, too.
class CountingHandler final : public ClassImpl<CountingHandler, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    explicit CountingHandler(int& heard) : heard_(heard) {}

    Result OnEvent(IObject*, const char*, const char* eventName, std::uint64_t, std::uint64_t) override
    {
        if (std::strcmp(eventName, "Destroyed") == 0)
            isSenderAlive_ = false;
        else
            ++heard_;
        return TVX_OK;
    }

    bool IsSenderAlive() const noexcept { return isSenderAlive_; }

private:
    int& heard_;
    bool isSenderAlive_ = true;
};

class HandMadeSubscription
{
public:
    HandMadeSubscription(ISimpleMap& map, int& heard) : map_(map), handler_(MakeRef<CountingHandler>(heard))
    {
        map_.SubscribeDestroyed(handler_.Get(), 0);
        map_.SubscribeChanged(handler_.Get(), 0, true);
    }
    ~HandMadeSubscription()
    {
        if (!handler_->IsSenderAlive())
            return;
        map_.SubscribeChanged(handler_.Get(), 0, false);
        map_.UnsubscribeDestroyed(handler_.Get());
    }
    HandMadeSubscription(const HandMadeSubscription&) = delete;
    HandMadeSubscription& operator=(const HandMadeSubscription&) = delete;

private:
    ISimpleMap& map_;
    const Ref<CountingHandler> handler_;
};

// The whole life of a subscription that hears nothing.
template <auto makeSubscription>
void SubscribeAndEnd(benchmark::State& state, std::int64_t)
{
    const auto map = MakeMap();
    int heard = 0;
    {
        const auto subscription = makeSubscription(*map, heard);
        map->SetInt("key", Number);
    }
    map->SetInt("key", Number);
    if (heard != 1)
        state.SkipWithError("another number of events was heard");
    for (auto _ : state)
        static_cast<void>(makeSubscription(*map, heard));
}

// One write, heard by one subscription.
template <auto makeSubscription>
void FireOne(benchmark::State& state, std::int64_t)
{
    const auto map = MakeMap();
    int heard = 0;
    const auto subscription = makeSubscription(*map, heard);
    for (auto _ : state)
        map->SetString("key", "value");
    if (heard != state.iterations())
        state.SkipWithError("another number of events was heard");
}

Subscription SubscribeFunction(ISimpleMap& map, int& heard)
{
    return Subscribe(map, &ISimpleMap::SubscribeChanged, [&heard](const Event&) { ++heard; });
}

HandMadeSubscription SubscribeByHand(ISimpleMap& map, int& heard)
{
    return HandMadeSubscription(map, heard);
}

Comparison MakeRow(const char* helper, std::int64_t size, Work ours, Work byHand)
{
    return {.name = std::string("AuthorHelpers/") + helper,
            .size = size,
            .ours = ours,
            .peer = "the same by hand",
            .theirs = byHand,
            .bound = Bound::None};
}

const Comparisons Rows = {
    MakeRow("ReadInt", Many, ReadKeys<ReadInt>, ReadKeys<ReadIntByHand>),
    MakeRow("Entries", Many, WalkEntries<CountEntries>, WalkEntries<CountEntriesByHand>),
    MakeRow("Items", Many, WalkItems<CountItems>, WalkItems<CountItemsByHand>),
    MakeRow("ItemsAs", Many, WalkItems<CountItemsAs>, WalkItems<CountItemsAsByHand>),
    MakeRow("UserData", Many, WalkUserData<CountUserData>, WalkUserData<CountUserDataByHand>),
    MakeRow("BatchUpdate", 0, SwitchMode<SwitchByGuard>, SwitchMode<SwitchByHand>),
    MakeRow("Subscribe", 0, SubscribeAndEnd<SubscribeFunction>, SubscribeAndEnd<SubscribeByHand>),
    MakeRow("Fire", 0, FireOne<SubscribeFunction>, FireOne<SubscribeByHand>),
};

}  // namespace
