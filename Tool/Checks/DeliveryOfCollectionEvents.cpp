// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/CollectionEvents.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

// The operations that subscribe, by the event.
struct Subscription
{
    const char* event;
    void (ICollection::*operation)(IEventHandler* handler, std::uint64_t cookie, bool subscribe);
};

constexpr Subscription Subscriptions[] = {
    {"ItemAdded", &ICollection::SubscribeItemAdded},
    {"ItemRemoved", &ICollection::SubscribeItemRemoved},
    {"ItemMoved", &ICollection::SubscribeItemMoved},
    {"Updated", &ICollection::SubscribeUpdated},
};

// Every event of a collection, and "Updated" after each of the three others.
void ChangeInEveryWay(Trial& trial, ICollection& collection, const LetteredItems& items)
{
    trial.Gives("Add", collection.Add(items.a), TVX_OK);
    trial.Gives("Move(0, 2)", collection.Move(0, 2), TVX_OK);
    trial.Gives("RemoveLast", collection.RemoveLast(), TVX_OK);
}

void CarriesItsNames(Trial& trial)
{
    constexpr std::uint64_t cookie = 0xFEDCBA9876543210u;
    for (const auto& [name, operation] : Subscriptions)
    {
        const LetteredItems items;
        const auto collection = MakeFilledCollection(trial, items);
        const auto handler = MakeRef<RecordingHandler>();
        (collection.Get()->*operation)(handler.Get(), cookie, true);
        ChangeInEveryWay(trial, *collection, items);
        trial.Expect(!handler->events.empty(), std::string("a handler of ") + name + " to be called", "no call");
        const auto& event = handler->events[0];
        trial.Same("the sender", event.sender, static_cast<IObject*>(collection.Get()));
        trial.Equal("the interface id", event.interfaceId, ICollection2::Id);
        trial.Equal("the event name", event.eventName, name);
        trial.Equal("the parameter, as an item", items.GetName(ToAddress(event.param)), "A");
        trial.Equal("the user value", event.userData, cookie);
    }
}

void SubscribesEachEventForItself(Trial& trial)
{
    for (const auto& [name, operation] : Subscriptions)
    {
        const LetteredItems items;
        const auto collection = MakeFilledCollection(trial, items);
        const auto handler = MakeRef<RecordingHandler>();
        (collection.Get()->*operation)(handler.Get(), 0, true);
        ChangeInEveryWay(trial, *collection, items);
        const bool isUpdated = operation == &ICollection::SubscribeUpdated;
        trial.Equal(std::string("the events of a handler of ") + name, handler->GetNames(),
                    Lines(isUpdated ? 3 : 1, name));
        (collection.Get()->*operation)(handler.Get(), 0, false);
        handler->events.clear();
        ChangeInEveryWay(trial, *collection, items);
        trial.Equal("the events of a handler that was unsubscribed", handler->GetNames(), Lines());
    }
}

void RemovesTheOldestOfDuplicates(Trial& trial)
{
    for (const auto& [name, operation] : Subscriptions)
    {
        const LetteredItems items;
        const auto collection = MakeFilledCollection(trial, items);
        const auto handler = MakeRef<RecordingHandler>();
        (collection.Get()->*operation)(handler.Get(), 1, true);
        (collection.Get()->*operation)(handler.Get(), 2, true);
        (collection.Get()->*operation)(handler.Get(), 2, false);
        ChangeInEveryWay(trial, *collection, items);
        trial.Expect(!handler->events.empty(), std::string("a handler of ") + name + " to be called", "no call");
        for (const auto& event : handler->events)
            trial.Equal("the user value of the subscription that is left", event.userData, 2u);
    }
}

// Whichever of the four operations is told the null handler.
void ForgetsAllForNull(Trial& trial)
{
    for (const auto& subscription : Subscriptions)
    {
        const LetteredItems items;
        const auto collection = MakeFilledCollection(trial, items);
        CollectionListener listener(*collection, items);
        (collection.Get()->*subscription.operation)(nullptr, 0, false);
        ChangeInEveryWay(trial, *collection, items);
        trial.Equal("the events after all are unsubscribed", listener.Take(), Lines());
    }
}

void IgnoresSubscribingNull(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeFilledCollection(trial, items);
    for (const auto& subscription : Subscriptions)
        (collection.Get()->*subscription.operation)(nullptr, 0, true);
    CollectionListener listener(*collection, items);
    trial.Gives("RemoveLast", collection->RemoveLast(), TVX_OK);
    trial.Equal("the events of the others", listener.Take(), (Lines{"ItemRemoved C", "Updated C"}));
}

void HandlersFindTheNewContent(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeFilledCollection(trial, items);
    CollectionListener listener(*collection, items);
    trial.Gives("Insert at 1", collection->Insert(1, items.c), TVX_OK);
    trial.Equal("what Insert's handlers found", listener.TakeContents(), (Lines{"A C B C", "A C B C"}));
    trial.Gives("Move(0, 3)", collection->Move(0, 3), TVX_OK);
    trial.Equal("what Move's handlers found", listener.TakeContents(), (Lines{"C B A C", "C B A C"}));
    trial.Gives("RemoveAt(1)", collection->RemoveAt(1), TVX_OK);
    trial.Equal("what RemoveAt's handlers found", listener.TakeContents(), (Lines{"C A C", "C A C"}));
    trial.Gives("Clear", collection->Clear(), TVX_OK);
    trial.Equal("what Clear's handlers found", listener.TakeContents(), (Lines{"C A", "C A", "C", "C", "", ""}));
}

// The last reference on an item is the collection's; the item has to outlive both events.
void KeepsTheItemAlive(Trial& trial)
{
    bool died = false;
    int aliveAt = 0;
    auto item = MakeRef<ProbeObject>(&died);
    const auto collection = MakeCollection(trial);
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { aliveAt += died ? 0 : 1; };
    collection->SubscribeItemRemoved(handler.Get(), 0, true);
    collection->SubscribeUpdated(handler.Get(), 0, true);
    trial.Gives("SetEventsEnabled(false)", collection->SetEventsEnabled(false), TVX_OK);
    trial.Gives("Add", collection->Add(item.Get()), TVX_OK);
    trial.Gives("SetEventsEnabled(true)", collection->SetEventsEnabled(true), TVX_OK);
    item = nullptr;
    trial.Gives("RemoveLast", collection->RemoveLast(), TVX_OK);
    trial.Equal("the events at which the item was alive", aliveAt, 2);
    trial.Expect(died, "the removed item to be released after the events", "a reference left behind");
}

void HoldsNobody(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeFilledCollection(trial, items);
    const auto handler = MakeRef<RecordingHandler>();
    for (const auto& subscription : Subscriptions)
        (collection.Get()->*subscription.operation)(handler.Get(), 0, true);
    ChangeInEveryWay(trial, *collection, items);
    trial.Equal("the handler's reference count", handler->GetRefCount(), 1u);
    trial.Equal("the collection's reference count", collection->GetRefCount(), 1u);
    trial.Equal("the count of an item that is held once", items.b->GetRefCount(), 2u);
}

constexpr Check Checks[] = {
    {"event-collection-carries-its-names", "A handler of each event looks at what comes along.",
     "The sender is the collection's primary face, the interface com.talvere.general.tvx.ICollection/2.0, the "
     "parameter "
     "the item, and the user value the 64-bit cookie given when subscribing.",
     CarriesItsNames},
    {"event-collection-subscribes-each-event-for-itself", "A handler hears one event only, then none.",
     "Each event is subscribed to and unsubscribed from by its own operation.", SubscribesEachEventForItself},
    {"event-collection-unsubscribes-oldest-of-duplicates", "One of two subscriptions of a handler is removed.",
     "Unsubscribing removes the oldest subscription of the handler; the cookie does not choose.",
     RemovesTheOldestOfDuplicates},
    {"event-collection-null-unsubscribes-all", "A null handler is unsubscribed from one of the four events.",
     "Unsubscribing a null handler removes all handlers from all events of the collection.", ForgetsAllForNull},
    {"event-collection-subscribing-null-is-ignored", "A null handler is subscribed to every event.",
     "Subscribing a null handler does nothing.", IgnoresSubscribingNull},
    {"event-collection-handlers-find-the-new-content", "Handlers read the collection at each event.",
     "Both events of a change come after it.", HandlersFindTheNewContent},
    {"event-collection-item-lives-through-its-events", "A collection's last reference on an item is removed.",
     "The item is alive during \"ItemRemoved\" and \"Updated\", and released after them.", KeepsTheItemAlive},
    {"event-collection-subscription-holds-nobody", "Reference counts are read after every event was fired.",
     "Firing leaves no reference on the handler, the collection or the items.", HoldsNobody},
};

}  // namespace

extern const Family DeliveryOfCollectionFamily = {"events", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
