// SPDX-License-Identifier: MIT
#include "Src/SimpleMap.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace tvx;
using namespace tvx::test;

constexpr std::uint64_t ChangedCookie = 0xFFFF'FFFF'FFFF'FFF1;
constexpr std::uint64_t ModeCookie = 2;

IVariant* GetVariant(const SeenEvent& event)
{
    return reinterpret_cast<IVariant*>(static_cast<std::uintptr_t>(event.param));
}

// Subscribes to both events of a map and writes them down as "Changed", "Mode true", "Mode false", checking all the rest
// of what an event carries.
class Listener
{
public:
    explicit Listener(SimpleMap& map) : map_(map)
    {
        handler->action = [this](const SeenEvent& event) { Note(event); };
        map_.SubscribeChanged(handler.Get(), ChangedCookie, true);
        map_.SubscribeBatchUpdatingModeChanged(handler.Get(), ModeCookie, true);
    }
    ~Listener()
    {
        map_.SubscribeChanged(handler.Get(), 0, false);
        map_.SubscribeBatchUpdatingModeChanged(handler.Get(), 0, false);
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    // What was seen since the last call.
    Texts Take() { return std::exchange(seen_, {}); }

    const Ref<RecordingHandler> handler = MakeRef<RecordingHandler>();

private:
    void Note(const SeenEvent& event)
    {
        EXPECT_EQ(event.sender, SenderOf(map_));
        EXPECT_EQ(event.interfaceId, "com.talvere.general.tvx.ISimpleMap/1.5");
        if (event.eventName == "Changed")
            NoteChanged(event);
        else
            NoteMode(event);
    }

    void NoteChanged(const SeenEvent& event)
    {
        EXPECT_EQ(event.param, 0U);
        EXPECT_EQ(event.userData, ChangedCookie);
        seen_.push_back("Changed");
    }

    void NoteMode(const SeenEvent& event)
    {
        EXPECT_EQ(event.eventName, "BatchUpdatingModeChanged");
        EXPECT_EQ(event.userData, ModeCookie);
        ASSERT_NE(event.param, 0U);
        bool mode = false;
        EXPECT_EQ(GetVariant(event)->GetBool(&mode), TVX_OK);
        EXPECT_TRUE(GetVariant(event)->IsUnique());
        seen_.push_back(mode ? "Mode true" : "Mode false");
    }

    SimpleMap& map_;
    Texts seen_;
};

TEST(SimpleMapEvents, AreHeldBackInANewMapUntilTheModeGoesOff)
{
    const auto map = MakeMap();
    Listener listener(*map);
    Fill(*map, {{"a", "1"}, {"b", "2"}, {"a", "3"}});
    EXPECT_EQ(listener.Take(), Texts());
    EXPECT_EQ(map->SetBatchUpdatingMode(false), TVX_OK);
    EXPECT_EQ(listener.Take(), (Texts{"Mode false", "Changed"}));
    EXPECT_FALSE(IsBatchUpdating(*map));
}

TEST(SimpleMapEvents, TellEveryWriteOutOfBatchMode)
{
    const auto map = MakeImmediateMap();
    Listener listener(*map);
    EXPECT_EQ(map->SetString("a", "1"), TVX_OK);
    EXPECT_EQ(listener.Take(), Texts{"Changed"});
    EXPECT_EQ(map->SetInt("b", 1), TVX_OK);
    EXPECT_EQ(listener.Take(), Texts{"Changed"});
    EXPECT_EQ(map->SetDouble("c", 1.0), TVX_OK);
    EXPECT_EQ(listener.Take(), Texts{"Changed"});
}

TEST(SimpleMapEvents, TellAWriteOfTheSameText)
{
    const auto map = MakeImmediateMap({{"a", "1"}});
    Listener listener(*map);
    Fill(*map, {{"a", "1"}, {"a", "1"}});
    EXPECT_EQ(listener.Take(), (Texts{"Changed", "Changed"}));
}

TEST(SimpleMapEvents, TellNothingOfAFailedWriteOrOfReading)
{
    const auto map = MakeImmediateMap({{"a", "1"}});
    Listener listener(*map);
    CaptureOutput([&] { map->SetString(nullptr, "1"); });
    Ref<ISimpleMap> copy;
    map->Clone(copy.Receive());
    map->GetSubMap("a", copy.Receive());
    EXPECT_EQ(Entries(*map), Texts{"a=1"});
    EXPECT_EQ(listener.Take(), Texts());
}

TEST(SimpleMapEvents, FollowTheTableOfStates)
{
    const auto map = MakeMap();  // batch-clean
    Listener listener(*map);
    EXPECT_EQ(map->SetBatchUpdatingMode(true), TVX_OK);  // batch-clean
    EXPECT_EQ(listener.Take(), Texts());
    EXPECT_EQ(map->SetBatchUpdatingMode(false), TVX_OK);  // immediate
    EXPECT_EQ(listener.Take(), Texts{"Mode false"});
    EXPECT_EQ(map->SetBatchUpdatingMode(false), TVX_OK);  // immediate
    EXPECT_EQ(listener.Take(), Texts());
    EXPECT_EQ(map->SetString("a", "1"), TVX_OK);  // immediate
    EXPECT_EQ(listener.Take(), Texts{"Changed"});
    EXPECT_EQ(map->SetBatchUpdatingMode(true), TVX_OK);  // batch-clean: the write before was told
    EXPECT_EQ(listener.Take(), Texts{"Mode true"});
    EXPECT_EQ(map->SetBatchUpdatingMode(false), TVX_OK);  // immediate
    EXPECT_EQ(listener.Take(), Texts{"Mode false"});
    EXPECT_EQ(map->SetBatchUpdatingMode(true), TVX_OK);
    EXPECT_EQ(map->SetString("a", "2"), TVX_OK);  // batch-dirty
    EXPECT_EQ(map->SetString("a", "3"), TVX_OK);  // batch-dirty
    EXPECT_EQ(map->SetBatchUpdatingMode(true), TVX_OK);
    EXPECT_EQ(listener.Take(), Texts{"Mode true"});
    EXPECT_EQ(map->SetBatchUpdatingMode(false), TVX_OK);  // immediate
    EXPECT_EQ(listener.Take(), (Texts{"Mode false", "Changed"}));
    EXPECT_EQ(map->SetBatchUpdatingMode(true), TVX_OK);
    EXPECT_EQ(map->SetBatchUpdatingMode(false), TVX_OK);
    EXPECT_EQ(listener.Take(), (Texts{"Mode true", "Mode false"}));  // the change is told once
}

TEST(SimpleMapEvents, FindTheNewModeInTheMap)
{
    const auto map = MakeMap({{"a", "1"}});
    const auto handler = MakeRef<RecordingHandler>();
    Texts seen;
    handler->action = [&](const SeenEvent& event)
    { seen.push_back(event.eventName + (IsBatchUpdating(*map) ? " on" : " off")); };
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    map->SetBatchUpdatingMode(false);
    map->SetBatchUpdatingMode(true);
    EXPECT_EQ(seen, (Texts{"BatchUpdatingModeChanged off", "Changed off", "BatchUpdatingModeChanged on"}));
}

TEST(SimpleMapEvents, FindTheNewValueInTheMap)
{
    const auto map = MakeImmediateMap();
    const auto handler = MakeRef<RecordingHandler>();
    std::string seen;
    handler->action = [&](const SeenEvent&) { seen = TextUnder(*map, "a"); };
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SetString("a", "new");
    EXPECT_EQ(seen, "new");
}

TEST(SimpleMapEvents, LetAHandlerWriteToTheMap)
{
    const auto map = MakeImmediateMap();
    Listener listener(*map);
    const auto writer = MakeRef<RecordingHandler>();
    writer->action = [&](const SeenEvent&)
    {
        if (writer->events.size() == 1)
            map->SetString("b", "handler");
    };
    map->SubscribeChanged(writer.Get(), 0, true);
    map->SetString("a", "1");
    EXPECT_EQ(Entries(*map), (Texts{"a=1", "b=handler"}));
    EXPECT_EQ(listener.Take(), (Texts{"Changed", "Changed"}));
    EXPECT_EQ(writer->events.size(), 2U);
}

TEST(SimpleMapEvents, TellTheChangeOnceWhenAHandlerWritesWhileTheModeGoesOff)
{
    const auto map = MakeMap({{"a", "1"}});
    const auto writer = MakeRef<RecordingHandler>();
    writer->action = [&](const SeenEvent&) { map->SetString("b", "handler"); };
    map->SubscribeBatchUpdatingModeChanged(writer.Get(), 0, true);
    Listener listener(*map);
    map->SetBatchUpdatingMode(false);
    // The mode is off already when the handler writes: its write is told at once, the held back one afterwards.
    EXPECT_EQ(listener.Take(), (Texts{"Changed", "Mode false", "Changed"}));
}

TEST(SimpleMapEvents, KeepTheChangeWhenAHandlerSwitchesTheModeOnAgain)
{
    const auto map = MakeMap({{"a", "1"}});
    Listener listener(*map);
    const auto switcher = MakeRef<RecordingHandler>();
    switcher->action = [&](const SeenEvent&)
    {
        if (switcher->events.size() == 1)
            map->SetBatchUpdatingMode(true);
    };
    map->SubscribeBatchUpdatingModeChanged(switcher.Get(), 0, true);
    map->SetBatchUpdatingMode(false);
    EXPECT_EQ(listener.Take(), (Texts{"Mode false", "Mode true"}));
    EXPECT_TRUE(IsBatchUpdating(*map));
    map->SetBatchUpdatingMode(false);
    EXPECT_EQ(listener.Take(), (Texts{"Mode false", "Changed"}));
}

TEST(SimpleMapEvents, ReleaseTheModeBeforeTheChangeIsTold)
{
    const auto map = MakeMap({{"a", "1"}});
    const auto handler = MakeRef<RecordingHandler>();
    Ref<IVariant> kept;
    bool unique = false;
    handler->action = [&](const SeenEvent& event)
    {
        if (event.eventName == "Changed")
            unique = kept->IsUnique();
        else
            kept = Ref<IVariant>(GetVariant(event));
    };
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    map->SetBatchUpdatingMode(false);
    EXPECT_TRUE(unique);
    EXPECT_TRUE(kept->IsUnique());
}

TEST(SimpleMapEvents, ReachEachHandlerInTheOrderOfSubscription)
{
    const auto map = MakeImmediateMap();
    Texts order;
    const auto first = MakeRef<RecordingHandler>();
    const auto second = MakeRef<RecordingHandler>();
    first->action = [&](const SeenEvent&) { order.push_back("first"); };
    second->action = [&](const SeenEvent&) { order.push_back("second"); };
    map->SubscribeChanged(first.Get(), 1, true);
    map->SubscribeChanged(second.Get(), 2, true);
    map->SubscribeChanged(first.Get(), 3, true);
    map->SetString("a", "1");
    EXPECT_EQ(order, (Texts{"first", "second", "first"}));
    map->SubscribeChanged(first.Get(), 0, false);  // the oldest of its two
    map->SetString("a", "1");
    EXPECT_EQ(first->events.back().userData, 3U);
    EXPECT_EQ(first->events.size(), 3U);
    EXPECT_TRUE(first->IsUnique());  // subscriptions hold no reference
}

TEST(SimpleMapEvents, AreSubscribedToOneByOne)
{
    const auto map = MakeImmediateMap();
    const auto changed = MakeRef<RecordingHandler>();
    const auto mode = MakeRef<RecordingHandler>();
    map->SubscribeChanged(changed.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(mode.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(changed.Get(), 0, false);  // it never subscribed to that one
    map->SetString("a", "1");
    map->SetBatchUpdatingMode(true);
    EXPECT_EQ(changed->GetNames(), Texts{"Changed"});
    EXPECT_EQ(mode->GetNames(), Texts{"BatchUpdatingModeChanged"});
}

TEST(SimpleMapEvents, IgnoreANullHandler)
{
    const auto map = MakeImmediateMap();
    Listener listener(*map);
    map->SubscribeChanged(nullptr, 0, true);
    map->SubscribeBatchUpdatingModeChanged(nullptr, 0, true);
    map->SetString("a", "1");
    map->SetBatchUpdatingMode(true);
    EXPECT_EQ(listener.Take(), (Texts{"Changed", "Mode true"}));
}

TEST(SimpleMapEvents, AreAllUnsubscribedByANullHandler)
{
    const auto map = MakeImmediateMap();
    Listener listener(*map);
    map->SubscribeChanged(nullptr, 0, false);
    map->SetString("a", "1");
    map->SetBatchUpdatingMode(true);
    EXPECT_EQ(listener.Take(), Texts());
}

TEST(SimpleMap, ReportsANullOutOfGetBatchUpdatingMode)
{
    const auto map = MakeMap();
    const auto output = CaptureOutput([&] { EXPECT_EQ(map->GetBatchUpdatingMode(nullptr), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", "Src/SimpleMap.cpp"));
}

}  // namespace
