// SPDX-License-Identifier: MIT
#include "Src/SimpleMap.h"

#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"

#include <gtest/gtest.h>

#include <string>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#endif

namespace
{

using namespace tvx;
using namespace tvx::test;

// A map that writes down which of its operations were called through the virtual table, and passes them on or not.
class OverridingMap final : public SimpleMap
{
public:
    Result SetBatchUpdatingMode(bool mode) override
    {
        calls.push_back(mode ? "SetBatchUpdatingMode true" : "SetBatchUpdatingMode false");
        return SimpleMap::SetBatchUpdatingMode(mode);
    }

    void FireChanged(IObjectBase* argument) override
    {
        calls.push_back(argument == nullptr ? "FireChanged null" : "FireChanged");
        if (passOn)
            SimpleMap::FireChanged(argument);
    }

    void FireBatchUpdatingModeChanged(IVariant* argument) override
    {
        bool mode = false;
        EXPECT_EQ(argument->GetBool(&mode), TVX_OK);
        calls.push_back(mode ? "FireBatchUpdatingModeChanged true" : "FireBatchUpdatingModeChanged false");
        if (passOn)
            SimpleMap::FireBatchUpdatingModeChanged(argument);
    }

    Texts calls;
    bool passOn = true;
};

TEST(SimpleMapOverrides, SeeEveryEvent)
{
    const auto map = MakeRef<OverridingMap>();
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    map->SetString("a", "1");
    map->SetBatchUpdatingMode(false);
    map->SetInt("a", 2);
    map->SetDouble("a", 0.5);
    EXPECT_EQ(map->calls, (Texts{"SetBatchUpdatingMode false", "FireBatchUpdatingModeChanged false", "FireChanged null",
                                 "FireChanged null", "FireChanged null"}));
    EXPECT_EQ(handler->GetNames(), (Texts{"BatchUpdatingModeChanged", "Changed", "Changed", "Changed"}));
}

TEST(SimpleMapOverrides, SeeTheModeThatSetSubMapSwitches)
{
    const auto map = MakeRef<OverridingMap>();
    map->SetSubMap("p", MakeMap({{"a", "1"}}).Get());
    EXPECT_EQ(map->calls, (Texts{"SetBatchUpdatingMode true", "SetBatchUpdatingMode true"}));
    map->SetBatchUpdatingMode(false);
    map->calls.clear();
    map->SetSubMap("p", MakeMap({{"a", "1"}}).Get());
    EXPECT_EQ(map->calls,
              (Texts{"SetBatchUpdatingMode true", "FireBatchUpdatingModeChanged true", "SetBatchUpdatingMode false",
                     "FireBatchUpdatingModeChanged false", "FireChanged null"}));
}

TEST(SimpleMapOverrides, CanKeepEventsToThemselves)
{
    const auto map = MakeRef<OverridingMap>();
    map->passOn = false;
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    map->SetBatchUpdatingMode(false);
    map->SetString("a", "1");
    EXPECT_TRUE(handler->events.empty());
    EXPECT_EQ(map->calls.size(), 3U);
}

TEST(SimpleMap, PassesAnArgumentOfFireChangedOnAsItIs)
{
    const auto map = MakeImmediateMap();
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 3, true);
    const auto object = MakeRef<BareObject>();
    map->FireChanged(object.Get());
    ASSERT_EQ(handler->events.size(), 1U);
    EXPECT_EQ(handler->events[0].param, reinterpret_cast<std::uintptr_t>(object.Get()));
    EXPECT_EQ(handler->events[0].sender, SenderOf(*map));
}

// What the clone of map tells when its batch updating mode goes off.
Texts EventsOfClone(SimpleMap& map)
{
    Ref<ISimpleMap> clone;
    EXPECT_EQ(map.Clone(clone.Receive()), TVX_OK);
    EXPECT_EQ(IsBatchUpdating(*clone), IsBatchUpdating(map));
    const auto handler = MakeRef<RecordingHandler>();
    clone->SubscribeChanged(handler.Get(), 0, true);
    clone->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    clone->SetBatchUpdatingMode(false);
    return handler->GetNames();
}

TEST(SimpleMap, IsClonedInEachOfItsStates)
{
    EXPECT_EQ(EventsOfClone(*MakeMap()), Texts{"BatchUpdatingModeChanged"});
    EXPECT_EQ(EventsOfClone(*MakeMap({{"a", "1"}})), (Texts{"BatchUpdatingModeChanged", "Changed"}));
    EXPECT_EQ(EventsOfClone(*MakeImmediateMap({{"a", "1"}})), Texts());
}

TEST(SimpleMap, IsNotChangedByBeingCloned)
{
    const auto map = MakeMap({{"a", "1"}});
    EventsOfClone(*map);  // the clone's change is told, the map's own stays pending
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SetBatchUpdatingMode(false);
    EXPECT_EQ(handler->GetNames(), Texts{"Changed"});
}

TEST(SimpleMap, TellsOnceThatItIsDestroyed)
{
    auto map = MakeImmediateMap({{"a", "1"}});
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeDestroyed(handler.Get(), 7);
    map->SubscribeChanged(handler.Get(), 8, true);
    map = nullptr;
    ASSERT_EQ(handler->GetNames(), Texts{"Destroyed"});
    EXPECT_EQ(handler->events[0].interfaceId, "com.talvere.general.tvx.IObject/1.0");
    EXPECT_EQ(handler->events[0].param, 0U);
    EXPECT_EQ(handler->events[0].userData, 7U);
}

TEST(SimpleMap, FreesItsEntriesBeforeItTellsThatItIsDestroyed)
{
#if defined(__SANITIZE_ADDRESS__)
    auto map = MakeMap({{"a key that is too long to lie inside a string object", "1"}});
    Ref<ISimpleMapIterator> iterator;
    ASSERT_EQ(map->GetIterator(iterator.Receive()), TVX_OK);
    const char* const key = iterator->GetKey();
    const auto handler = MakeRef<RecordingHandler>();
    bool freed = false;
    handler->action = [&](const SeenEvent&) { freed = __asan_address_is_poisoned(key) != 0; };
    map->SubscribeDestroyed(handler.Get(), 0);
    iterator = nullptr;
    EXPECT_FALSE(__asan_address_is_poisoned(key));
    map = nullptr;
    EXPECT_TRUE(freed);
#else
    GTEST_SKIP() << "only a build with the address sanitizer can tell";
#endif
}

}  // namespace
