// SPDX-License-Identifier: MIT
#include "Tool/Checks/ThreadEvents.h"

#include "Tool/Checks/Threads.h"

#include <chrono>
#include <future>
#include <semaphore>

namespace tvx::check
{

namespace
{

constexpr int Rounds = 1000;

// While a handler of the source runs, work runs on another thread. Gives whether it ended before the handler did, which
// waits for that as long as told. The thread is there before, as nothing may be thrown through the module.
bool EndsDuringFiring(const EventSource& source, CountingHandler& handler, std::chrono::milliseconds patience,
                      const std::function<void()>& work)
{
    std::counting_semaphore<> mayBegin(0);
    auto working = std::async(std::launch::async,
                              [&]
                              {
                                  mayBegin.acquire();
                                  work();
                              });
    bool hasEnded = false;
    handler.action = [&]
    {
        mayBegin.release();
        hasEnded = working.wait_for(patience) == std::future_status::ready;
    };
    source.subscribe(&handler, true);
    source.fire();
    mayBegin.release();  // the handler has not run when the module is wrong
    working.get();
    handler.action = nullptr;
    return hasEnded;
}

}  // namespace

EventSource MakeSettingsMapSource(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    return {"a settings map", map, [map](IEventHandler* handler, bool add) { map->SubscribeChanged(handler, 0, add); },
            [map] { map->SetInt("key", 1); }};
}

EventSource MakeCollectionSource(Trial& trial)
{
    const auto collection = MakeCollection(trial);
    return {"a collection", collection,
            [collection](IEventHandler* handler, bool add) { collection->SubscribeItemAdded(handler, 0, add); },
            [collection] { collection->Add(nullptr); }};
}

// A message below the minimum level is written nowhere, and fires all the same.
EventSource MakeLoggerSource(Trial& trial)
{
    const auto logger = trial.Get<ILogger>(LoggerExport);
    trial.Gives("SetLevel", logger->SetLevel("Check", LogLevel::Fatal), TVX_OK);
    return {"a logger", logger,
            [logger](IEventHandler* handler, bool add) { logger->AdviseMessageLogged(handler, 0, add); },
            [logger] { logger->Log("Check", LogLevel::Trace, "source", "scope", "file", 1, "message"); }};
}

void ExpectLockedEvents(Trial& trial, const EventSource& source)
{
    const auto steady = MakeRef<CountingHandler>();
    const auto changing = MakeRef<CountingHandler>();
    source.subscribe(steady.Get(), true);
    RunTogether(
        [&](int number)
        {
            for (int round = 0; round < Rounds; ++round)
            {
                if (number == 0)
                {
                    source.fire();
                    continue;
                }
                source.subscribe(changing.Get(), true);
                source.subscribe(changing.Get(), false);
            }
        });
    trial.Equal("the number of events of " + source.name + " at a steady handler", steady->events.load(), Rounds);
    const auto before = changing->events.load();
    source.fire();
    trial.Equal("the number of events at a handler that was unsubscribed", changing->events.load(), before);
    trial.Equal("the number of events at a steady handler after one more", steady->events.load(), Rounds + 1);
    source.subscribe(steady.Get(), false);
}

void ExpectFiringThread(Trial& trial, const EventSource& source)
{
    const auto handler = MakeRef<CountingHandler>();
    source.subscribe(handler.Get(), true);
    source.fire();
    trial.Equal("the number of events of " + source.name, handler->events.load(), 1);
    trial.Expect(handler->lastThread == std::this_thread::get_id(), "the event to come on the thread that fired",
                 "another thread");
    int events = 0;
    std::thread::id there;
    RunElsewhere(
        [&]
        {
            there = std::this_thread::get_id();
            source.fire();
            events = handler->events;
        });
    trial.Equal("the number of events when another thread has fired, too", events, 2);
    trial.Expect(handler->lastThread == there, "the event to come on the other thread that fired", "another thread");
    source.subscribe(handler.Get(), false);
}

void ExpectUnsubscribingWaits(Trial& trial, const EventSource& source)
{
    const auto handler = MakeRef<CountingHandler>();
    const bool hasEnded = EndsDuringFiring(source, *handler, std::chrono::milliseconds(25),
                                           [&] { source.subscribe(handler.Get(), false); });
    trial.Equal("the number of events of " + source.name, handler->events.load(), 1);
    trial.Expect(!hasEnded,
                 "unsubscribing from " + source.name + " to wait on another thread until the handler has run",
                 "its end while the handler ran");
    source.fire();
    trial.Equal("the number of events at a handler that was unsubscribed", handler->events.load(), 1);
}

void ExpectListsLockedApart(Trial& trial, const EventSource& source)
{
    const auto handler = MakeRef<CountingHandler>();
    const bool hasEnded = EndsDuringFiring(source, *handler, std::chrono::seconds(3),
                                           [&]
                                           {
                                               source.object->SubscribeDestroyed(handler.Get(), 0);
                                               source.object->UnsubscribeDestroyed(handler.Get());
                                           });
    source.subscribe(handler.Get(), false);
    trial.Equal("the number of events of " + source.name, handler->events.load(), 1);
    trial.Expect(hasEnded, "subscribing to \"Destroyed\" of " + source.name + " to end while another event is fired",
                 "an endless waiting");
}

}  // namespace tvx::check
