// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/CollectionEvents.h"
#include "Tool/Checks/LetteredHandlers.h"
#include "Tool/Checks/SettingsMapEvents.h"

#include <utility>

namespace tvx::check
{

// Handlers that change the object which fires.
namespace
{

// A map with a write to tell, whose listener hears everything, before a handler of the switch that does something once.
template <class Deed>
void ExpectEventsAround(Trial& trial, const std::string& what, const Lines& expected, Deed&& deed)
{
    const auto map = MakeMapIn(trial, SettingsMapState::Dirty);
    SettingsMapListener listener(*map);
    bool done = false;
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&)
    {
        if (!std::exchange(done, true))
            deed(*map);
    };
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    trial.Gives("SetBatchUpdatingMode(false)", SwitchOff(*map), TVX_OK);
    trial.Equal("the events when a handler " + what, listener.Take(), expected);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, false);
    trial.Gives("SetBatchUpdatingMode(false)", SwitchOff(*map), TVX_OK);
    const auto left = listener.Take();
    const bool isPending = expected.back() == SwitchedOn;
    trial.Equal("the events that were left to tell", left, isPending ? Lines{SwitchedOff, Changed} : Lines());
}

void KeepsTheChangeWhenSwitchedOnAgain(Trial& trial)
{
    ExpectEventsAround(trial, "switches the mode on again", {SwitchedOff, SwitchedOn},
                       [](ISimpleMap& map) { SwitchOn(map); });
}

void TellsAWriteOfAHandler(Trial& trial)
{
    ExpectEventsAround(trial, "writes while the mode goes off", {SwitchedOff, Changed, Changed},
                       [](ISimpleMap& map) { map.SetString("more", "value"); });
}

void TellsEveryWriteOfAHandler(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    SettingsMapListener listener(*map);
    int more = 3;
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&)
    {
        if (more-- > 0)
            map->SetInt("count", more);
    };
    map->SubscribeChanged(handler.Get(), 0, true);
    trial.Gives("SetString", map->SetString("key", "value"), TVX_OK);
    trial.Equal("the events when a handler of \"Changed\" writes three times", listener.Take(), Lines(4, Changed));
    std::int32_t written = -1;
    trial.Gives("GetInt", map->GetInt("count", &written), TVX_OK);
    trial.Equal("what the last call of the handler wrote", written, 0);
}

void KeepsTheItemOfAnAddition(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeCollection(trial);
    CollectionListener listener(*collection, items);
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { collection->RemoveLast(); };
    collection->SubscribeItemAdded(handler.Get(), 0, true);
    trial.Gives("Add", collection->Add(items.a), TVX_OK);
    trial.Equal("the events when the added item is removed at once", listener.Take(),
                (Lines{"ItemAdded A", "ItemRemoved A", "Updated A", "Updated A"}));
    trial.Equal("the number of items", collection->GetCount(), 0u);
}

void LetsAHandlerAddWhileItemsGo(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeCollection(trial);
    trial.Gives("Add", collection->Add(items.a), TVX_OK);
    CollectionListener listener(*collection, items);
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { collection->Add(items.b); };
    collection->SubscribeItemRemoved(handler.Get(), 0, true);
    trial.Gives("RemoveLast", collection->RemoveLast(), TVX_OK);
    trial.Equal("the events when a handler puts another item in", listener.Take(),
                (Lines{"ItemRemoved A", "ItemAdded B", "Updated B", "Updated A"}));
    trial.Equal("what the collection holds", items.Show(*collection), "B");
}

void CallsWhoSubscribesToTheSecondEvent(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeCollection(trial);
    const auto late = MakeRef<RecordingHandler>();
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { collection->SubscribeUpdated(late.Get(), 0, true); };
    collection->SubscribeItemAdded(handler.Get(), 0, true);
    trial.Gives("Add", collection->Add(items.a), TVX_OK);
    trial.Equal("the events of a handler that was subscribed between the two", late->GetNames(), Lines{"Updated"});
}

void DestroysAnotherObject(Trial& trial)
{
    LetteredHandlers handlers;
    auto first = MakeString(trial, "first");
    auto second = MakeString(trial, "second");
    first->SubscribeDestroyed(handlers.a.Get(), 0);
    first->SubscribeDestroyed(handlers.c.Get(), 0);
    second->SubscribeDestroyed(handlers.b.Get(), 0);
    handlers.doA = [&] { second = nullptr; };
    first = nullptr;
    trial.Equal("the calls when a handler destroys the object of another one", handlers.TakeLog(), "ABC");
}

constexpr Check SettingsMapChecks[] = {
    {"event-firing-switching-on-again-keeps-the-change", "A handler of the mode going off switches it on again.",
     "\"Changed\" is fired only when the mode is still off after \"BatchUpdatingModeChanged\"; the change stays to be "
     "told.",
     KeepsTheChangeWhenSwitchedOnAgain},
    {"event-firing-write-while-the-mode-goes-off-is-told", "A handler of the mode going off writes to the map.",
     "The mode is off before its event, so the write is told at once, and the pending change after it.",
     TellsAWriteOfAHandler},
    {"event-firing-writes-of-handlers-are-told", "A handler of \"Changed\" writes to the map, three times in all.",
     "Each write is one \"Changed\" for every handler, whoever makes it.", TellsEveryWriteOfAHandler},
};

constexpr Check CollectionChecks[] = {
    {"event-firing-added-item-may-be-removed", "A handler of \"ItemAdded\" removes the item again.",
     "The removal is told inside, then the addition's \"Updated\" follows with the item.", KeepsTheItemOfAnAddition},
    {"event-firing-item-may-be-added-while-another-goes", "A handler of \"ItemRemoved\" adds another item.",
     "The addition is told inside, then the removal's \"Updated\" follows.", LetsAHandlerAddWhileItemsGo},
    {"event-firing-second-event-calls-who-subscribed-at-the-first",
     "A handler of \"ItemAdded\" subscribes \"Updated\".",
     "A subscription that is made between the two events of a change is called for the second.",
     CallsWhoSubscribesToTheSecondEvent},
};

constexpr Check StringChecks[] = {
    {"event-firing-destroyed-may-destroy-another", "A handler of \"Destroyed\" releases another object.",
     "An object may die while another one tells of its end.", DestroysAnotherObject},
};

}  // namespace

extern const Family ChangesWhileSettingsMapFiresFamily = {"events", SimpleMapExport, Needs::Module, SettingsMapChecks};
extern const Family ChangesWhileCollectionFiresFamily = {"events", CollectionExport, Needs::Module, CollectionChecks};
extern const Family ChangesWhileStringDiesFamily = {"events", StringExport, Needs::Module, StringChecks};

}  // namespace tvx::check
