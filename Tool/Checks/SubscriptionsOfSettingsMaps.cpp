// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/LetteredHandlers.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/SettingsMapEvents.h"

namespace tvx::check
{

namespace
{

void Write(Trial& trial, ISimpleMap& map)
{
    trial.Gives("SetString", map.SetString("key", "value"), TVX_OK);
}

void CallsInOrder(Trial& trial)
{
    LetteredHandlers handlers;
    const auto map = MakeImmediateSimpleMap(trial);
    for (const auto& handler : {handlers.c, handlers.a, handlers.b, handlers.a})
        map->SubscribeChanged(handler.Get(), 0, true);
    Write(trial, *map);
    trial.Equal("the order of the calls", handlers.TakeLog(), "CABA");
}

void RemovesTheOldestOfDuplicates(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    const auto handler = MakeRef<RecordingHandler>();
    for (const std::uint64_t cookie : {1u, 2u, 3u})
        map->SubscribeChanged(handler.Get(), cookie, true);
    map->SubscribeChanged(handler.Get(), 3, false);  // the cookie does not choose
    Write(trial, *map);
    trial.Equal("the number of calls", handler->events.size(), std::size_t{2});
    trial.Equal("the user value of the first call", handler->events[0].userData, 2u);
    trial.Equal("the user value of the second call", handler->events[1].userData, 3u);
}

void SubscribesEachEventForItself(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    map->SubscribeChanged(handler.Get(), 0, false);
    Write(trial, *map);
    SwitchOff(*map);
    trial.Equal("the events without \"Changed\"", handler->GetNames(), (Lines{"BatchUpdatingModeChanged"}));
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, false);
    handler->events.clear();
    SwitchOn(*map);
    Write(trial, *map);
    SwitchOff(*map);
    trial.Equal("the events without \"BatchUpdatingModeChanged\"", handler->GetNames(), (Lines{"Changed"}));
}

void IgnoresSubscribingNull(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    SettingsMapListener listener(*map);
    map->SubscribeChanged(nullptr, 1, true);
    map->SubscribeBatchUpdatingModeChanged(nullptr, 1, true);
    Write(trial, *map);
    trial.Gives("SetBatchUpdatingMode(false)", SwitchOff(*map), TVX_OK);
    trial.Equal("the events of the others", listener.Take(), (Lines{SwitchedOff, Changed}));
}

void IgnoresUnsubscribingStrangers(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    const auto stranger = MakeRef<RecordingHandler>();
    map->SubscribeChanged(stranger.Get(), 0, false);
    SettingsMapListener listener(*map);
    map->SubscribeChanged(stranger.Get(), 0, false);
    Write(trial, *map);
    trial.Equal("the events of the others", listener.Take(), Lines{Changed});
}

// Whichever of the two operations is told the null handler.
void ForgetsAllForNull(Trial& trial)
{
    for (const auto unsubscribe : {&ISimpleMap::SubscribeChanged, &ISimpleMap::SubscribeBatchUpdatingModeChanged})
    {
        const auto map = MakeSimpleMap(trial);
        SettingsMapListener listener(*map);
        SettingsMapListener other(*map);
        (map.Get()->*unsubscribe)(nullptr, 0, false);
        Write(trial, *map);
        SwitchOff(*map);
        trial.Equal("the events of the one listener", listener.Take(), Lines());
        trial.Equal("the events of the other listener", other.Take(), Lines());
    }
}

void KeepsDestroyed(Trial& trial)
{
    const auto handler = MakeRef<RecordingHandler>();
    auto map = MakeImmediateSimpleMap(trial);
    map->SubscribeDestroyed(handler.Get(), 0);
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeChanged(nullptr, 0, false);
    Write(trial, *map);
    map = nullptr;
    trial.Equal("the events that are left", handler->GetNames(), (Lines{"Destroyed"}));
}

void UnsubscribingDestroyedKeepsChanged(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    SettingsMapListener listener(*map);
    map->UnsubscribeDestroyed(nullptr);
    Write(trial, *map);
    trial.Equal("the events after UnsubscribeDestroyed(null)", listener.Take(), Lines{Changed});
}

constexpr Check Checks[] = {
    {"event-settings-map-calls-in-order", "Several handlers subscribe to \"Changed\", one of them twice.",
     "Handlers are called in the order of subscribing; a handler that subscribed twice is called twice.", CallsInOrder},
    {"event-settings-map-unsubscribes-oldest-of-duplicates", "One of three subscriptions of a handler is removed.",
     "Unsubscribing removes the oldest subscription of the handler; the cookie does not choose.",
     RemovesTheOldestOfDuplicates},
    {"event-settings-map-subscribes-each-event-for-itself", "A handler is unsubscribed from one of two events.",
     "Unsubscribing from an event leaves the subscription to the other one.", SubscribesEachEventForItself},
    {"event-settings-map-subscribing-null-is-ignored", "A null handler is subscribed to both events.",
     "Subscribing a null handler does nothing.", IgnoresSubscribingNull},
    {"event-settings-map-unsubscribing-strangers-is-ignored", "A handler that is not subscribed is unsubscribed.",
     "Unsubscribing a handler that is not subscribed does nothing.", IgnoresUnsubscribingStrangers},
    {"event-settings-map-null-unsubscribes-all", "A null handler is unsubscribed from one of the events.",
     "Unsubscribing a null handler removes all handlers from all events of the map.", ForgetsAllForNull},
    {"event-settings-map-null-leaves-destroyed",
     "Null is unsubscribed from \"Changed\" of a map that is then destroyed.",
     "\"Destroyed\" has a list of its own, which unsubscribing null from the map's events leaves alone.",
     KeepsDestroyed},
    {"event-settings-map-null-for-destroyed-leaves-changed", "Null is unsubscribed from \"Destroyed\".",
     "Unsubscribing null from \"Destroyed\" leaves the subscriptions to the map's own events.",
     UnsubscribingDestroyedKeepsChanged},
};

}  // namespace

extern const Family SubscriptionOfSettingsMapFamily = {"events", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
