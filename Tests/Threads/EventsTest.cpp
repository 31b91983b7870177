// SPDX-License-Identifier: MIT
#include "Tests/Support/Doubles.h"
#include "Tests/Threads/RunTogether.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>

namespace tvx::test
{

namespace
{

constexpr const char SourceId[] = "test.IEventSource/1.0";
constexpr const char Changed[] = "Changed";

class EventSource final : public ClassImpl<EventSource, IObject>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase>;

    void Subscribe(IEventHandler* handler) { Connect(SourceId, Changed, handler, 0, true); }

    void Unsubscribe(IEventHandler* handler) { Connect(SourceId, Changed, handler, 0, false); }

    void FireChanged() { Fire(SourceId, Changed, this, 0); }
};

// Counts events from any thread.
class CountingHandler final : public ClassImpl<CountingHandler, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t, std::uint64_t) override
    {
        ++events;
        return TVX_OK;
    }

    std::atomic<int> events = 0;
};

// Keeps the thread that fires inside its call until it may go on.
class WaitingHandler final : public ClassImpl<WaitingHandler, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t, std::uint64_t) override
    {
        entered.set_value();
        mayGo.get_future().wait();
        left = true;
        return TVX_OK;
    }

    std::promise<void> entered;
    std::promise<void> mayGo;
    std::atomic<bool> left = false;
};

}  // namespace

TEST(EventThreads, SubscribeUnsubscribeAndFireOnOneObject)
{
    constexpr int rounds = 300;
    const auto source = MakeRef<EventSource>();
    const auto steady = MakeRef<CountingHandler>();
    std::vector<Ref<CountingHandler>> handlers;
    for (int number = 0; number < ThreadCount; ++number)
        handlers.push_back(MakeRef<CountingHandler>());
    source->Subscribe(steady.Get());
    RunTogether(
        [&](int number)
        {
            auto& own = *handlers[static_cast<std::size_t>(number)];
            for (int i = 0; i < rounds; ++i)
            {
                source->Subscribe(&own);
                source->FireChanged();
                source->Unsubscribe(&own);
            }
        });
    EXPECT_EQ(steady->events, ThreadCount * rounds);
    for (const auto& handler : handlers)
        EXPECT_GE(handler->events, rounds);
    for (const auto& handler : handlers)
        handler->events = 0;
    source->FireChanged();
    for (const auto& handler : handlers)
        EXPECT_EQ(handler->events, 0);
}

TEST(EventThreads, MakeTheListsOfAnObjectOnceWhenTheyComeFirstTogether)
{
    constexpr int objectCount = 300;
    const auto handler = MakeRef<CountingHandler>();
    std::vector<Ref<EventSource>> sources;
    for (int i = 0; i < objectCount; ++i)
        sources.push_back(MakeRef<EventSource>());
    RunTogether(
        [&](int number)
        {
            for (const auto& source : sources)
            {
                source->Subscribe(handler.Get());
                if (number % 2 == 0)
                    source->SubscribeDestroyed(handler.Get(), 0);
            }
        });
    for (const auto& source : sources)
        source->FireChanged();
    EXPECT_EQ(handler->events, objectCount * ThreadCount);
    sources.clear();
    EXPECT_EQ(handler->events, objectCount * ThreadCount * 3 / 2);
}

TEST(EventThreads, DestroyObjectsWhileOthersFire)
{
    const auto source = MakeRef<EventSource>();
    const auto handler = MakeRef<CountingHandler>();
    source->Subscribe(handler.Get());
    RunTogether(
        [&](int)
        {
            for (int i = 0; i < 300; ++i)
            {
                auto own = MakeRef<EventSource>();
                own->Subscribe(handler.Get());
                own->SubscribeDestroyed(handler.Get(), 0);
                own->FireChanged();
                source->FireChanged();
                own = nullptr;
            }
        });
    EXPECT_EQ(handler->events, ThreadCount * 300 * 3);
}

TEST(EventThreads, WaitWithUnsubscribingUntilAFiringIsOver)
{
    const auto source = MakeRef<EventSource>();
    const auto handler = MakeRef<WaitingHandler>();
    source->Subscribe(handler.Get());
    auto firing = std::async(std::launch::async, [&] { source->FireChanged(); });
    handler->entered.get_future().wait();
    auto unsubscribing = std::async(std::launch::async,
                                    [&]
                                    {
                                        source->Unsubscribe(handler.Get());
                                        return handler->left.load();
                                    });
    EXPECT_EQ(unsubscribing.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    handler->mayGo.set_value();
    EXPECT_TRUE(unsubscribing.get());
}

}  // namespace tvx::test
