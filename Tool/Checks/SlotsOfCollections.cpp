// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/CollectionSlots.h"

namespace tvx::check
{

namespace
{

using Change = Result (*)(const AbcCollection& abc);

// A change by its number and by its name, each on a collection of its own, leaves both with the same order.
void CheckChange(Trial& trial, const std::string& what, const char* expected, Change byNumber, Change byName)
{
    const AbcCollection numbered(trial);
    trial.Gives(what + " by its number", byNumber(numbered), TVX_OK);
    trial.Equal("the order after " + what + " by its number", numbered.ShowOrder(trial), expected);
    const AbcCollection named(trial);
    trial.Gives(what + " by its name", byName(named), TVX_OK);
    trial.Equal("the order after " + what + " by its name", named.ShowOrder(trial), expected);
}

void GetItem(Trial& trial)
{
    const AbcCollection abc(trial);
    const auto numbered = Take<IObject>(trial, "GetItem by its number", TVX_OK,
                                        [&](void** out) { return CallICollectionGetItem(abc.face, 1, out); });
    trial.Same("the item by slot 11", numbered.Get(), abc.b);
    Ref<IObject> named;
    trial.Gives("GetItem by its name", abc.collection->GetItem(1, named.Receive()), TVX_OK);
    trial.Same("the item by its name", named.Get(), abc.b);
}

void GetCount(Trial& trial)
{
    const AbcCollection abc(trial);
    trial.Equal("GetCount by its number", CallICollectionGetCount(abc.face), 3u);
    trial.Equal("GetCount by its name", abc.collection->GetCount(), 3u);
}

void Add(Trial& trial)
{
    CheckChange(
        trial, "Add", "abcx", [](const AbcCollection& abc) { return CallICollectionAdd(abc.face, abc.x); },
        [](const AbcCollection& abc) { return abc.collection->Add(abc.x); });
}

void RemoveLast(Trial& trial)
{
    CheckChange(
        trial, "RemoveLast", "ab", [](const AbcCollection& abc) { return CallICollectionRemoveLast(abc.face); },
        [](const AbcCollection& abc) { return abc.collection->RemoveLast(); });
}

void Insert(Trial& trial)
{
    CheckChange(
        trial, "Insert", "axbc", [](const AbcCollection& abc) { return CallICollectionInsert(abc.face, 1, abc.x); },
        [](const AbcCollection& abc) { return abc.collection->Insert(1, abc.x); });
}

void RemoveAt(Trial& trial)
{
    CheckChange(
        trial, "RemoveAt", "ac", [](const AbcCollection& abc) { return CallICollectionRemoveAt(abc.face, 1); },
        [](const AbcCollection& abc) { return abc.collection->RemoveAt(1); });
}

void InsertBefore(Trial& trial)
{
    CheckChange(
        trial, "InsertBefore", "axbc",
        [](const AbcCollection& abc) { return CallICollectionInsertBefore(abc.face, abc.x, abc.b); },
        [](const AbcCollection& abc) { return abc.collection->InsertBefore(abc.x, abc.b); });
}

void Remove(Trial& trial)
{
    CheckChange(
        trial, "Remove", "ac", [](const AbcCollection& abc) { return CallICollectionRemove(abc.face, abc.b); },
        [](const AbcCollection& abc) { return abc.collection->Remove(abc.b); });
}

void Move(Trial& trial)
{
    CheckChange(
        trial, "Move", "bac", [](const AbcCollection& abc) { return CallICollectionMove(abc.face, 0, 2); },
        [](const AbcCollection& abc) { return abc.collection->Move(0, 2); });
}

void MoveItem(Trial& trial)
{
    CheckChange(
        trial, "MoveItem", "bac", [](const AbcCollection& abc) { return CallICollectionMoveItem(abc.face, abc.a, 2); },
        [](const AbcCollection& abc) { return abc.collection->MoveItem(abc.a, 2); });
}

void MoveBefore(Trial& trial)
{
    CheckChange(
        trial, "MoveBefore", "bac",
        [](const AbcCollection& abc) { return CallICollectionMoveBefore(abc.face, abc.a, abc.c); },
        [](const AbcCollection& abc) { return abc.collection->MoveBefore(abc.a, abc.c); });
}

void Clear(Trial& trial)
{
    CheckChange(
        trial, "Clear", "", [](const AbcCollection& abc) { return CallICollectionClear(abc.face); },
        [](const AbcCollection& abc) { return abc.collection->Clear(); });
}

void IndexOf(Trial& trial)
{
    const AbcCollection abc(trial);
    RoomyOut<std::uint32_t> numbered{7};
    std::uint32_t named = 7;
    trial.Gives("IndexOf by its number", CallICollectionIndexOf(abc.face, abc.c, &numbered.value), TVX_OK);
    trial.Equal("the index by slot 27", numbered.value, 2u);
    trial.Gives("IndexOf by its name", abc.collection->IndexOf(abc.c, &named), TVX_OK);
    trial.Equal("the index by its name", named, 2u);
}

void Contains(Trial& trial)
{
    const AbcCollection abc(trial);
    RoomyOut<bool> present;
    RoomyOut<bool> absent{true};
    bool named = false;
    trial.Gives("Contains by its number", CallICollectionContains(abc.face, abc.a, &present.value), TVX_OK);
    trial.Gives("Contains of another object", CallICollectionContains(abc.face, abc.x, &absent.value), TVX_OK);
    trial.Gives("Contains by its name", abc.collection->Contains(abc.a, &named), TVX_OK);
    trial.Equal("what slot 30 says of an item", present.value, true);
    trial.Equal("what slot 30 says of another object", absent.value, false);
    trial.Equal("what Contains says of an item", named, true);
}

constexpr Check Checks[] = {
    {"slot-collection-11-get-item", "GetItem is called by its number.",
     "Slot 11 of ICollection is GetItem: it gives the item of an index by its out.", GetItem},
    {"slot-collection-12-get-count", "GetCount is called by its number.",
     "Slot 12 of ICollection is GetCount: it gives the number of items as its result.", GetCount},
    {"slot-collection-13-add", "Add is called by its number.",
     "Slot 13 of ICollection is Add: it puts an item behind the last one.", Add},
    {"slot-collection-14-remove-last", "RemoveLast is called by its number.",
     "Slot 14 of ICollection is RemoveLast: it removes the last item only.", RemoveLast},
    {"slot-collection-15-insert", "Insert is called by its number.",
     "Slot 15 of ICollection is Insert: it puts an item at an index.", Insert},
    {"slot-collection-16-remove-at", "RemoveAt is called by its number.",
     "Slot 16 of ICollection is RemoveAt: it removes the item of an index.", RemoveAt},
    {"slot-collection-19-insert-before", "InsertBefore is called by its number.",
     "Slot 19 of ICollection is InsertBefore: it puts an item in front of another one.", InsertBefore},
    {"slot-collection-21-remove", "Remove is called by its number.",
     "Slot 21 of ICollection is Remove: it removes an item.", Remove},
    {"slot-collection-23-move", "Move is called by its number.",
     "Slot 23 of ICollection is Move: it moves the item of an index in front of that of another one.", Move},
    {"slot-collection-24-move-item", "MoveItem is called by its number.",
     "Slot 24 of ICollection is MoveItem: it moves an item in front of that of an index.", MoveItem},
    {"slot-collection-25-move-before", "MoveBefore is called by its number.",
     "Slot 25 of ICollection is MoveBefore: it moves an item in front of another one.", MoveBefore},
    {"slot-collection-27-index-of", "IndexOf is called by its number.",
     "Slot 27 of ICollection is IndexOf: it gives the index of an item by its out.", IndexOf},
    {"slot-collection-28-clear", "Clear is called by its number.",
     "Slot 28 of ICollection is Clear: it removes every item.", Clear},
    {"slot-collection-30-contains", "Contains is called by its number.",
     "Slot 30 of ICollection is Contains: it tells by its out whether an object is an item.", Contains},
};

}  // namespace

extern const Family SlotsOfCollectionFamily = {"slots", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
