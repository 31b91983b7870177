// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/CollectionEvents.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

// A change of [A, B, C], and what it tells.
template <class Change>
void ExpectEvents(Trial& trial, const std::string& what, const Lines& expected, Change&& change)
{
    const LetteredItems items;
    const auto collection = MakeFilledCollection(trial, items);
    CollectionListener listener(*collection, items);
    trial.Gives(what, change(*collection, items), TVX_OK);
    trial.Equal("the events of " + what, listener.Take(), expected);
}

void TellsAdding(Trial& trial)
{
    ExpectEvents(trial, "Add", {"ItemAdded A", "Updated A"},
                 [](ICollection& held, const LetteredItems& items) { return held.Add(items.a); });
    ExpectEvents(trial, "Insert at 1", {"ItemAdded C", "Updated C"},
                 [](ICollection& held, const LetteredItems& items) { return held.Insert(1, items.c); });
    ExpectEvents(trial, "InsertBefore", {"ItemAdded A", "Updated A"},
                 [](ICollection& held, const LetteredItems& items) { return held.InsertBefore(items.a, items.c); });
}

void TellsAddingBehindTheEnd(Trial& trial)
{
    ExpectEvents(trial, "Insert at 99", {"ItemAdded B", "Updated B"},
                 [](ICollection& held, const LetteredItems& items) { return held.Insert(99, items.b); });
}

void TellsAddingNull(Trial& trial)
{
    ExpectEvents(trial, "Add of null", {"ItemAdded null", "Updated null"},
                 [](ICollection& held, const LetteredItems&) { return held.Add(nullptr); });
}

void TellsRemoving(Trial& trial)
{
    ExpectEvents(trial, "RemoveAt(0)", {"ItemRemoved A", "Updated A"},
                 [](ICollection& held, const LetteredItems&) { return held.RemoveAt(0); });
    ExpectEvents(trial, "Remove of B", {"ItemRemoved B", "Updated B"},
                 [](ICollection& held, const LetteredItems& items) { return held.Remove(items.b); });
    ExpectEvents(trial, "RemoveLast", {"ItemRemoved C", "Updated C"},
                 [](ICollection& held, const LetteredItems&) { return held.RemoveLast(); });
}

void TellsMoving(Trial& trial)
{
    ExpectEvents(trial, "Move(0, 2)", {"ItemMoved A", "Updated A"},
                 [](ICollection& held, const LetteredItems&) { return held.Move(0, 2); });
    ExpectEvents(trial, "MoveItem of C to 0", {"ItemMoved C", "Updated C"},
                 [](ICollection& held, const LetteredItems& items) { return held.MoveItem(items.c, 0); });
    ExpectEvents(trial, "MoveBefore of A and C", {"ItemMoved A", "Updated A"},
                 [](ICollection& held, const LetteredItems& items) { return held.MoveBefore(items.a, items.c); });
    ExpectEvents(trial, "MoveBefore of A and null", {"ItemMoved A", "Updated A"},
                 [](ICollection& held, const LetteredItems& items) { return held.MoveBefore(items.a, nullptr); });
}

void TellsAMoveToTheNextIndex(Trial& trial)
{
    ExpectEvents(trial, "Move(0, 1)", {"ItemMoved A", "Updated A"},
                 [](ICollection& held, const LetteredItems&) { return held.Move(0, 1); });
    ExpectEvents(trial, "Move(2, 99)", {"ItemMoved C", "Updated C"},
                 [](ICollection& held, const LetteredItems&) { return held.Move(2, 99); });
}

void TellsNothingOfAMoveToTheSameIndex(Trial& trial)
{
    ExpectEvents(trial, "Move(1, 1)", {}, [](ICollection& held, const LetteredItems&) { return held.Move(1, 1); });
    ExpectEvents(trial, "MoveItem of B to 1", {},
                 [](ICollection& held, const LetteredItems& items) { return held.MoveItem(items.b, 1); });
    ExpectEvents(trial, "MoveBefore of B and B", {},
                 [](ICollection& held, const LetteredItems& items) { return held.MoveBefore(items.b, items.b); });
}

void TellsClearingItemByItem(Trial& trial)
{
    ExpectEvents(trial, "Clear",
                 {"ItemRemoved C", "Updated C", "ItemRemoved B", "Updated B", "ItemRemoved A", "Updated A"},
                 [](ICollection& held, const LetteredItems&) { return held.Clear(); });
}

void TellsNothingOfClearingNothing(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeCollection(trial);
    CollectionListener listener(*collection, items);
    trial.Gives("Clear of an empty collection", collection->Clear(), TVX_OK);
    trial.Equal("the events of Clear", listener.Take(), Lines());
}

void TellsTheFirstOfDuplicates(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeFilledCollection(trial, items);
    trial.Gives("Add", collection->Add(items.a), TVX_OK);
    CollectionListener listener(*collection, items);
    trial.Gives("Remove", collection->Remove(items.a), TVX_OK);
    trial.Equal("the events of Remove", listener.Take(), (Lines{"ItemRemoved A", "Updated A"}));
    trial.Equal("what was held at each event", listener.TakeContents(), (Lines{"B C A", "B C A"}));
}

void TellsNotifyUpdated(Trial& trial)
{
    ExpectEvents(trial, "NotifyUpdated of B", {"Updated B"},
                 [](ICollection& held, const LetteredItems& items) { return held.NotifyUpdated(items.b); });
}

void TellsNothingOfReading(Trial& trial)
{
    ExpectEvents(trial, "reading", {},
                 [](ICollection& held, const LetteredItems& items)
                 {
                     std::uint32_t index = 0;
                     bool flag = false;
                     Ref<IObject> item;
                     held.GetItem(0, item.Receive());
                     held.IndexOf(items.a, &index);
                     held.Contains(items.b, &flag);
                     return held.GetEventsEnabled(&flag);
                 });
}

constexpr Check Checks[] = {
    {"event-collection-add-fires-added-then-updated", "Items are put in by Add, Insert and InsertBefore.",
     "Each of the three fires \"ItemAdded\" and then \"Updated\", both with the item.", TellsAdding},
    {"event-collection-insert-behind-the-end-fires", "An item is inserted at an index far behind the end.",
     "Such an item is appended, with the events of every other insertion.", TellsAddingBehindTheEnd},
    {"event-collection-null-item-fires-null", "A null item is added.",
     "A null item fires the same events; their parameter is 0.", TellsAddingNull},
    {"event-collection-remove-fires-removed-then-updated", "Items are taken out by RemoveAt, Remove and RemoveLast.",
     "Each of the three fires \"ItemRemoved\" and then \"Updated\", both with the item.", TellsRemoving},
    {"event-collection-move-fires-moved-then-updated", "Items are moved by Move, MoveItem and MoveBefore.",
     "A move fires \"ItemMoved\" and then \"Updated\", and neither \"ItemRemoved\" nor \"ItemAdded\".", TellsMoving},
    {"event-collection-move-to-next-index-fires", "An item is moved to the index behind its own.",
     "A target names the place in front of what stands there before the move; such a move leaves the order as it is "
     "and "
     "fires all the same.",
     TellsAMoveToTheNextIndex},
    {"event-collection-move-to-same-index-is-silent", "An item is moved to its own index.",
     "Nothing changes and nothing fires.", TellsNothingOfAMoveToTheSameIndex},
    {"event-collection-clear-fires-for-each-item", "A collection of three items is cleared.",
     "The items go last first, each with its \"ItemRemoved\" and \"Updated\".", TellsClearingItemByItem},
    {"event-collection-clear-of-nothing-is-silent", "An empty collection is cleared.", "Without an item nothing fires.",
     TellsNothingOfClearingNothing},
    {"event-collection-remove-of-duplicates-fires-once", "An item that stands twice is removed.",
     "Remove takes the first occurrence only, and tells of that one.", TellsTheFirstOfDuplicates},
    {"event-collection-notify-updated-fires-updated-only", "NotifyUpdated is called for an item that is held.",
     "It fires \"Updated\" with the item and nothing else.", TellsNotifyUpdated},
    {"event-collection-reading-is-silent", "A collection is read.", "Reading fires no event.", TellsNothingOfReading},
};

}  // namespace

extern const Family EventsOfCollectionFamily = {"events", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
