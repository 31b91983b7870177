// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/CollectionEvents.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

// What a collection does not tell of.
namespace
{

void IsSilentWhenDisabled(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeFilledCollection(trial, items);
    CollectionListener listener(*collection, items);
    trial.Gives("SetEventsEnabled(false)", collection->SetEventsEnabled(false), TVX_OK);
    trial.Gives("Add", collection->Add(items.a), TVX_OK);
    trial.Gives("Move(0, 2)", collection->Move(0, 2), TVX_OK);
    trial.Gives("RemoveAt(0)", collection->RemoveAt(0), TVX_OK);
    trial.Gives("Clear", collection->Clear(), TVX_OK);
    trial.Equal("the events while they are disabled", listener.Take(), Lines());
}

void TellsAgainWhenEnabled(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeCollection(trial);
    CollectionListener listener(*collection, items);
    trial.Gives("SetEventsEnabled(false)", collection->SetEventsEnabled(false), TVX_OK);
    trial.Gives("Add", collection->Add(items.a), TVX_OK);
    trial.Gives("SetEventsEnabled(true)", collection->SetEventsEnabled(true), TVX_OK);
    trial.Equal("the events of enabling", listener.Take(), Lines());
    trial.Gives("Add", collection->Add(items.b), TVX_OK);
    trial.Equal("the events after enabling", listener.Take(), (Lines{"ItemAdded B", "Updated B"}));
}

void NotifiesThoughDisabled(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeFilledCollection(trial, items);
    CollectionListener listener(*collection, items);
    trial.Gives("SetEventsEnabled(false)", collection->SetEventsEnabled(false), TVX_OK);
    trial.Gives("NotifyUpdated", collection->NotifyUpdated(items.b), TVX_OK);
    trial.Equal("the events of NotifyUpdated", listener.Take(), Lines{"Updated B"});
}

void DoesNotNotifyOfStrangers(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeCollection(trial);
    trial.Gives("Add", collection->Add(items.a), TVX_OK);
    CollectionListener listener(*collection, items);
    trial.Gives("NotifyUpdated of an item that is not held", collection->NotifyUpdated(items.b), TVX_E_FAIL);
    trial.Equal("the events of NotifyUpdated", listener.Take(), Lines());
}

void DoesNotNotifyOfNull(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeCollection(trial);
    trial.Gives("Add of null", collection->Add(nullptr), TVX_OK);
    CollectionListener listener(*collection, items);
    trial.Gives("NotifyUpdated of null", collection->NotifyUpdated(nullptr), TVX_E_FAIL);
    trial.Equal("the events of NotifyUpdated", listener.Take(), Lines());
}

void TellsNothingOfAFailure(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeCollection(trial);
    CollectionListener listener(*collection, items);
    trial.Reports("RemoveAt behind the end", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  [&] { return collection->RemoveAt(0); });
    trial.Reports("RemoveLast of nothing", "TVX_RETURN_FAIL_IF", TVX_E_FAIL, [&] { return collection->RemoveLast(); });
    trial.Reports("Remove of a stranger", "TVX_FORWARD_FAILURE", TVX_E_FAIL,
                  [&] { return collection->Remove(items.a); });
    trial.Reports("Move from behind the end", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  [&] { return collection->Move(0, 1); });
    trial.Reports("MoveItem of a stranger", "TVX_FORWARD_FAILURE", TVX_E_FAIL,
                  [&] { return collection->MoveItem(items.a, 0); });
    trial.Reports("InsertBefore of a stranger", "TVX_FORWARD_FAILURE", TVX_E_FAIL,
                  [&] { return collection->InsertBefore(items.a, items.b); });
    trial.Equal("the events of failures", listener.Take(), Lines());
}

void TellsOnlyItsOwnListeners(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeCollection(trial);
    const auto other = MakeFilledCollection(trial, items);
    CollectionListener listener(*other, items);
    trial.Gives("Add", collection->Add(items.a), TVX_OK);
    trial.Gives("NotifyUpdated", collection->NotifyUpdated(items.a), TVX_OK);
    trial.Equal("the events of the other collection", listener.Take(), Lines());
}

constexpr Check Checks[] = {
    {"event-collection-disabled-is-silent", "Events are disabled, and a collection is changed in every way.",
     "While events are disabled a change fires nothing.", IsSilentWhenDisabled},
    {"event-collection-enabled-again-fires", "Events are disabled and enabled again around a change.",
     "Enabling fires nothing and makes up for nothing; the next change is told again.", TellsAgainWhenEnabled},
    {"event-collection-notify-updated-fires-though-disabled", "NotifyUpdated is called while events are disabled.",
     "NotifyUpdated is the caller's own word and fires \"Updated\" whether or not events are enabled.",
     NotifiesThoughDisabled},
    {"event-collection-notify-updated-of-stranger-fails", "NotifyUpdated is called for an item that is not held.",
     "It gives -1 without a report, and nothing fires.", DoesNotNotifyOfStrangers},
    {"event-collection-notify-updated-of-null-fails", "NotifyUpdated is called with null where null is held.",
     "A null item is never found: -1 without a report, and nothing fires.", DoesNotNotifyOfNull},
    {"event-collection-failed-change-is-silent", "Changes that cannot be made are tried.",
     "A change that fails fires nothing.", TellsNothingOfAFailure},
    {"event-collection-tells-only-its-own-listeners", "Of two collections one is changed, the other one listened to.",
     "Subscriptions belong to one collection.", TellsOnlyItsOwnListeners},
};

}  // namespace

extern const Family SilenceOfCollectionFamily = {"events", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
