// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/CollectionSlots.h"

namespace tvx::check
{

namespace
{

// A change that fires the event, and the orders that it leaves the first and the second time.
struct Trigger
{
    Result (*change)(const AbcCollection& abc);
    const char* orders[2];
};

void CheckSubscribe(Trial& trial, SubscribeSlot subscribe, const char* event, const Trigger& trigger)
{
    const AbcCollection abc(trial);
    std::size_t time = 0;
    CheckSubscribeSlot(trial, abc.face, subscribe, event,
                       [&] { return trigger.change(abc) == TVX_OK && abc.ShowOrder(trial) == trigger.orders[time++]; });
}

void SubscribeItemAdded(Trial& trial)
{
    CheckSubscribe(trial, &CallICollectionSubscribeItemAdded, "ItemAdded",
                   {[](const AbcCollection& abc) { return abc.collection->Add(abc.x); }, {"abcx", "abcxx"}});
}

void SubscribeItemRemoved(Trial& trial)
{
    CheckSubscribe(trial, &CallICollectionSubscribeItemRemoved, "ItemRemoved",
                   {[](const AbcCollection& abc) { return abc.collection->RemoveAt(0); }, {"bc", "c"}});
}

void SubscribeItemMoved(Trial& trial)
{
    CheckSubscribe(trial, &CallICollectionSubscribeItemMoved, "ItemMoved",
                   {[](const AbcCollection& abc) { return abc.collection->Move(0, 2); }, {"bac", "abc"}});
}

void SubscribeUpdated(Trial& trial)
{
    CheckSubscribe(trial, &CallICollectionSubscribeUpdated, "Updated",
                   {[](const AbcCollection& abc) { return abc.collection->NotifyUpdated(abc.b); }, {"abc", "abc"}});
}

using SubscribeByName = void (ICollection::*)(IEventHandler* handler, std::uint64_t cookie, bool subscribe);

Ref<RecordingHandler> Listen(Trial& trial, const AbcCollection& abc, SubscribeByName subscribe)
{
    auto handler = MakeRef<RecordingHandler>();
    (abc.collection.Get()->*subscribe)(handler.Get(), 0, true);
    Need(trial, "subscribing", abc.ShowOrder(trial) == "abc" && handler->events.empty());
    return handler;
}

void CheckFire(Trial& trial, FireSlot fire, const char* event, SubscribeByName subscribe)
{
    const AbcCollection abc(trial);
    const auto handler = Listen(trial, abc, subscribe);
    CheckFireSlot(trial, abc.face, fire, abc.b, event, *handler);
    trial.ExpectSilence("the call");
    trial.Equal("the order afterwards", abc.ShowOrder(trial), "abc");
}

void FireItemAdded(Trial& trial)
{
    CheckFire(trial, &CallCollectionFireItemAdded, "ItemAdded", &ICollection::SubscribeItemAdded);
}

void FireItemRemoved(Trial& trial)
{
    CheckFire(trial, &CallCollectionFireItemRemoved, "ItemRemoved", &ICollection::SubscribeItemRemoved);
}

void FireItemMoved(Trial& trial)
{
    CheckFire(trial, &CallCollectionFireItemMoved, "ItemMoved", &ICollection::SubscribeItemMoved);
}

void FireUpdated(Trial& trial)
{
    CheckFire(trial, &CallCollectionFireUpdated, "Updated", &ICollection::SubscribeUpdated);
}

void NotifyUpdated(Trial& trial)
{
    const AbcCollection abc(trial);
    trial.Gives("NotifyUpdated of another object", CallICollectionNotifyUpdated(abc.face, abc.x), TVX_E_FAIL);
    trial.Equal("the order afterwards", abc.ShowOrder(trial), "abc");
    const auto handler = Listen(trial, abc, &ICollection::SubscribeUpdated);
    trial.Gives("NotifyUpdated by its number", CallICollectionNotifyUpdated(abc.face, abc.b), TVX_OK);
    trial.Gives("NotifyUpdated by its name", abc.collection->NotifyUpdated(abc.b), TVX_OK);
    trial.Equal("the events of NotifyUpdated", handler->GetNames(), Texts{"Updated", "Updated"});
}

void GetEventsEnabled(Trial& trial)
{
    const AbcCollection abc(trial);
    for (const bool enabled : {true, false})
    {
        RoomyOut<bool> numbered{!enabled};
        bool named = !enabled;
        trial.Gives("GetEventsEnabled by its number", CallICollectionGetEventsEnabled(abc.face, &numbered.value),
                    TVX_OK);
        trial.Gives("GetEventsEnabled by its name", abc.collection->GetEventsEnabled(&named), TVX_OK);
        trial.Equal("what slot 17 says", numbered.value, enabled);
        trial.Equal("what GetEventsEnabled says", named, enabled);
        Need(trial, "SetEventsEnabled", abc.collection->SetEventsEnabled(!enabled) == TVX_OK);
    }
}

void SetEventsEnabled(Trial& trial)
{
    const AbcCollection abc(trial);
    for (const bool enabled : {false, true})
    {
        bool came = !enabled;
        trial.Gives("SetEventsEnabled by its number", CallICollectionSetEventsEnabled(abc.face, enabled), TVX_OK);
        Need(trial, "GetEventsEnabled", abc.collection->GetEventsEnabled(&came) == TVX_OK);
        trial.Equal("what GetEventsEnabled says after slot 18", came, enabled);
    }
}

constexpr Check Checks[] = {
    {"slot-collection-17-get-events-enabled", "GetEventsEnabled is called by its number.",
     "Slot 17 of ICollection is GetEventsEnabled: it tells by its out whether changes fire events.", GetEventsEnabled},
    {"slot-collection-18-set-events-enabled", "SetEventsEnabled is called by its number.",
     "Slot 18 of ICollection is SetEventsEnabled: it switches the events of changes.", SetEventsEnabled},
    {"slot-collection-20-subscribe-item-added", "SubscribeItemAdded is called by its number.",
     "Slot 20 of ICollection is SubscribeItemAdded: it subscribes and unsubscribes one handler for \"ItemAdded\".",
     SubscribeItemAdded},
    {"slot-collection-22-subscribe-item-removed", "SubscribeItemRemoved is called by its number.",
     "Slot 22 of ICollection is SubscribeItemRemoved: it subscribes and unsubscribes one handler for \"ItemRemoved\".",
     SubscribeItemRemoved},
    {"slot-collection-26-subscribe-item-moved", "SubscribeItemMoved is called by its number.",
     "Slot 26 of ICollection is SubscribeItemMoved: it subscribes and unsubscribes one handler for \"ItemMoved\".",
     SubscribeItemMoved},
    {"slot-collection-29-notify-updated", "NotifyUpdated is called by its number.",
     "Slot 29 of ICollection is NotifyUpdated: it fires \"Updated\" for an item, and gives -1 for another object.",
     NotifyUpdated},
    {"slot-collection-31-subscribe-updated", "SubscribeUpdated is called by its number.",
     "Slot 31 of ICollection is SubscribeUpdated: it subscribes and unsubscribes one handler for \"Updated\".",
     SubscribeUpdated},
    {"slot-collection-32-fire-item-added", "FireItemAdded, behind the interface, is called by its number.",
     "Slot 32 of a collection is FireItemAdded: it fires \"ItemAdded\" with its argument and changes nothing.",
     FireItemAdded},
    {"slot-collection-33-fire-item-removed", "FireItemRemoved, behind the interface, is called by its number.",
     "Slot 33 of a collection is FireItemRemoved: it fires \"ItemRemoved\" with its argument and changes nothing.",
     FireItemRemoved},
    {"slot-collection-34-fire-item-moved", "FireItemMoved, behind the interface, is called by its number.",
     "Slot 34 of a collection is FireItemMoved: it fires \"ItemMoved\" with its argument and changes nothing.",
     FireItemMoved},
    {"slot-collection-35-fire-updated", "FireUpdated, behind the interface, is called by its number.",
     "Slot 35 of a collection is FireUpdated: it fires \"Updated\" with its argument and changes nothing.",
     FireUpdated},
};

}  // namespace

extern const Family SlotsOfCollectionEventFamily = {"slots", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
