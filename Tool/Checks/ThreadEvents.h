// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Objects.h"
#include "Tool/Checks/ThreadDoubles.h"

#include <functional>

// The subscriptions of an object that has events of its own, when several threads have to do with them.
namespace tvx::check
{

// An object and one of its events.
struct EventSource
{
    std::string name;  // with an article
    Ref<IObject> object;
    std::function<void(IEventHandler* handler, bool add)> subscribe;  // on any thread
    std::function<void()> fire;                                       // on one thread at a time
};

EventSource MakeSettingsMapSource(Trial& trial);
EventSource MakeCollectionSource(Trial& trial);
EventSource MakeLoggerSource(Trial& trial);

void ExpectLockedEvents(Trial& trial, const EventSource& source);
void ExpectFiringThread(Trial& trial, const EventSource& source);
void ExpectUnsubscribingWaits(Trial& trial, const EventSource& source);
void ExpectListsLockedApart(Trial& trial, const EventSource& source);

// The rows of these checks.

using MakeSource = EventSource (*)(Trial& trial);

template <MakeSource Source>
constexpr Check LocksItsEvents(const char* name)
{
    return {name, "One thread fires while three others subscribe and unsubscribe.",
            "The list of subscriptions has a lock: a subscription that stays gets every event once, and one that is "
            "gone gets none.",
            [](Trial& trial) { ExpectLockedEvents(trial, Source(trial)); }};
}

template <MakeSource Source>
constexpr Check FiresOnTheCallersThread(const char* name)
{
    return {name, "The same event is fired on two threads, one after the other.",
            "Handlers run on the thread that fires, before the operation that fired returns.",
            [](Trial& trial) { ExpectFiringThread(trial, Source(trial)); }};
}

template <MakeSource Source>
constexpr Check KeepsUnsubscribersWaiting(const char* name)
{
    return {name, "A handler is unsubscribed on another thread while it runs.",
            "The list is locked as long as it is fired: a handler that was unsubscribed on another thread does not run "
            "any more, and may go away.",
            [](Trial& trial) { ExpectUnsubscribingWaits(trial, Source(trial)); }};
}

template <MakeSource Source>
constexpr Check LocksItsListsApart(const char* name)
{
    return {
        name, "\"Destroyed\" is subscribed to on another thread while a handler of the object's own event runs.",
        "The subscriptions to \"Destroyed\" have a list and a lock of their own: nobody waits there for another event.",
        [](Trial& trial) { ExpectListsLockedApart(trial, Source(trial)); }};
}

}  // namespace tvx::check
