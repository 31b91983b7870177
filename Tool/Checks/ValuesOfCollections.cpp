// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/LetteredCollection.h"

namespace tvx::check
{

namespace
{

void IsBornEmpty(Trial& trial)
{
    LetteredCollection collection(trial, "");
    trial.Equal("the references on a new collection", collection->GetRefCount(), 1u);
    bool enabled = false;
    trial.Gives("GetEventsEnabled", collection->GetEventsEnabled(&enabled), TVX_OK);
    trial.Equal("GetEventsEnabled of a new collection", enabled, true);
}

void AppendsItems(Trial& trial)
{
    LetteredCollection collection(trial, "");
    collection.Does("Add of A", TVX_OK, "A", [&](ICollection2& it) { return it.Add(collection.GetItem('A')); });
    collection.Does("Add of B", TVX_OK, "AB", [&](ICollection2& it) { return it.Add(collection.GetItem('B')); });
}

void GivesItemsWithAReference(Trial& trial)
{
    LetteredCollection collection(trial, "AB");
    for (const std::uint32_t index : {0u, 1u})
    {
        IObject* const item = collection.GetItem(index == 0 ? 'A' : 'B');
        Ref<IObject> out;
        trial.Gives("GetItem", collection->GetItem(index, out.Receive()), TVX_OK);
        trial.Same("item " + Show(index), out.Get(), item);
        trial.Equal("the references on an item in a collection that was asked for it", item->GetRefCount(), 3u);
    }
    collection.Holds("GetItem", "AB");
}

void RefusesANullOutForAnItem(Trial& trial)
{
    LetteredCollection collection(trial, "A-");
    for (const std::uint32_t index : {0u, 1u})
        collection.Does("GetItem of an item with a null out", TVX_E_POINTER, "A-",
                        [&](ICollection2& it) { return it.GetItem(index, nullptr); });
}

void HoldsNullItems(Trial& trial)
{
    LetteredCollection collection(trial, "A-B-");
    IObject* out = collection.GetItem('A');
    trial.Gives("GetItem of a null item", collection->GetItem(1, &out), TVX_OK);
    trial.Same("the out of GetItem of a null item", out, nullptr);
    collection.Does("RemoveAt of a null item", TVX_OK, "AB-", [](ICollection2& it) { return it.RemoveAt(1); });
    collection.Does("Insert of null", TVX_OK, "-AB-", [](ICollection2& it) { return it.Insert(0, nullptr); });
}

void HoldsAnItemSeveralTimes(Trial& trial)
{
    LetteredCollection collection(trial, "AABA");
    collection.Does("RemoveAt of one of three places", TVX_OK, "ABA", [](ICollection2& it) { return it.RemoveAt(1); });
    collection.Drop();
}

void KeepsTheEventsSwitch(Trial& trial)
{
    const auto collection = MakeCollection(trial);
    for (const bool enabled : {false, false, true, true, false})
    {
        trial.Gives("SetEventsEnabled", collection->SetEventsEnabled(enabled), TVX_OK);
        bool out = !enabled;
        trial.Gives("GetEventsEnabled", collection->GetEventsEnabled(&out), TVX_OK);
        trial.Equal("GetEventsEnabled after SetEventsEnabled", out, enabled);
    }
}

void ChangesAlsoWithoutEvents(Trial& trial)
{
    LetteredCollection collection(trial, "AB");
    trial.Gives("SetEventsEnabled(false)", collection->SetEventsEnabled(false), TVX_OK);
    collection.Does("Add without events", TVX_OK, "ABC",
                    [&](ICollection2& it) { return it.Add(collection.GetItem('C')); });
    collection.Does("Move without events", TVX_OK, "CAB", [](ICollection2& it) { return it.Move(2, 0); });
    collection.Does("RemoveLast without events", TVX_OK, "CA", [](ICollection2& it) { return it.RemoveLast(); });
}

void ReleasesEachItemAtItsDeath(Trial& trial)
{
    LetteredCollection collection(trial, "AB-AC");
    collection.Drop();
}

void SharesNothingWithOthers(Trial& trial)
{
    LetteredCollection first(trial, "AB");
    LetteredCollection second(trial, "");
    first.Does("Clear of one of two", TVX_OK, "", [](ICollection2& it) { return it.Clear(); });
    second.Does("Add to another", TVX_OK, "A", [&](ICollection2& it) { return it.Add(second.GetItem('A')); });
    first.Holds("Add to another", "");
}

void RefusesANullOut(Trial& trial)
{
    const auto factory = trial.Get<ICollectionFactory>(CollectionExport);
    trial.Gives("CreateCollection with a null out", factory->CreateCollection(nullptr), TVX_E_POINTER);
}

constexpr Check Checks[] = {
    {"value-collection-is-born-empty", "A new collection is asked for its items and its events.",
     "CreateCollection gives a collection without items, events enabled, with the caller's one reference.",
     IsBornEmpty},
    {"value-collection-add-appends", "Two items are added.",
     "Add gives 0, appends, and takes one reference on the item.", AppendsItems},
    {"value-collection-get-item-adds-a-reference", "Items are asked for by their indices.",
     "GetItem gives 0, the very object, and one reference for the caller.", GivesItemsWithAReference},
    {"value-collection-get-item-refuses-null-out", "GetItem of an item is called with a null out.",
     "For an index that is there a null out gives -4 without a report.", RefusesANullOutForAnItem},
    {"value-collection-holds-null-items", "Null is added, inserted, asked for and removed by its index.",
     "A null item takes a place like any other; GetItem gives 0 and writes null.", HoldsNullItems},
    {"value-collection-holds-an-item-several-times", "One item is added three times.",
     "An item may stand more than once, with one reference for each place.", HoldsAnItemSeveralTimes},
    {"value-collection-keeps-its-events-switch", "SetEventsEnabled and GetEventsEnabled are called in turn.",
     "GetEventsEnabled gives 0 and what SetEventsEnabled said last.", KeepsTheEventsSwitch},
    {"value-collection-changes-without-events", "Items are added, moved and removed while events are disabled.",
     "The switch is for events alone: changes are made all the same.", ChangesAlsoWithoutEvents},
    {"value-collection-death-releases-each-item", "A collection with several items is released.",
     "When the collection is destroyed, each item is released once for each of its places.",
     ReleasesEachItemAtItsDeath},
    {"value-collection-collections-are-independent", "Two collections are made and changed.",
     "Each CreateCollection makes a collection of its own.", SharesNothingWithOthers},
    {"value-collection-factory-refuses-null-out", "CreateCollection is called with a null out.",
     "A null out gives -4 without a report.", RefusesANullOut},
};

}  // namespace

extern const Family ValuesOfCollectionFamily = {"values", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
