// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotChecking.h"

namespace tvx::check
{

namespace
{

// A settings map and an iterator over it, which must not outlive it.
struct Walk
{
    Ref<ISimpleMap5> map;
    Ref<ISimpleMapIterator> iterator;
    void* c;
};

// One of the two kinds of iterators. In the maps here they visit the same entries: which slot gives which kind is checked
// with the settings map.
using Kind = Result (ISimpleMap::*)(ISimpleMapIterator** out);
constexpr Kind All = &ISimpleMap::GetIterator;
constexpr Kind NoSubMaps = &ISimpleMap::GetIteratorNoSubMaps;

Walk Begin(Trial& trial, Kind kind, const Texts& keysAndValues)
{
    const auto map = MakeFilledSimpleMap(trial, keysAndValues);
    Ref<ISimpleMapIterator> iterator;
    const Result result = (map.Get()->*kind)(iterator.Receive());
    Need(trial, "making an iterator", result == TVX_OK && iterator && !Query<IObject>(iterator));
    return {map, iterator, ToC<ISimpleMapIterator>(iterator)};
}

Walk BeginFilled(Trial& trial, Kind kind)
{
    return Begin(trial, kind, {"a", "1", "b", "2"});
}

template <Kind Of>
void GetKey(Trial& trial)
{
    const auto walk = BeginFilled(trial, Of);
    ExpectText(trial, "GetKey by its number", CallISimpleMapIteratorGetKey(walk.c), "a");
    trial.Equal("GetKey by its name", walk.iterator->GetKey(), "a");
    const auto empty = Begin(trial, Of, {});
    trial.Same("GetKey at the end", CallISimpleMapIteratorGetKey(empty.c), nullptr);
}

template <Kind Of>
void GetValue(Trial& trial)
{
    const auto walk = BeginFilled(trial, Of);
    ExpectText(trial, "GetValue by its number", CallISimpleMapIteratorGetValue(walk.c), "1");
    trial.Equal("GetValue by its name", walk.iterator->GetValue(), "1");
    const auto empty = Begin(trial, Of, {});
    trial.Same("GetValue at the end", CallISimpleMapIteratorGetValue(empty.c), nullptr);
}

template <Kind Of>
void Next(Trial& trial)
{
    const Texts sameValues = {"a", "a", "b", "b"};
    const auto numbered = Begin(trial, Of, sameValues);
    trial.Gives("Next by its number", CallISimpleMapIteratorNext(numbered.c), TVX_OK);
    trial.Equal("the key after Next by its number", numbered.iterator->GetKey(), "b");
    const auto named = Begin(trial, Of, sameValues);
    trial.Gives("Next by its name", named.iterator->Next(), TVX_OK);
    trial.Equal("the key after Next by its name", named.iterator->GetKey(), "b");
    const auto empty = Begin(trial, Of, {});
    trial.Gives("Next at the end", CallISimpleMapIteratorNext(empty.c), TVX_E_FAIL);
}

template <Kind Of>
void IsEnd(Trial& trial)
{
    const auto walk = BeginFilled(trial, Of);
    RoomyOut<bool> numbered{true};
    bool named = true;
    trial.Gives("IsEnd by its number", CallISimpleMapIteratorIsEnd(walk.c, &numbered.value), TVX_OK);
    trial.Gives("IsEnd by its name", walk.iterator->IsEnd(&named), TVX_OK);
    trial.Equal("what slot 10 says on an entry", numbered.value, false);
    trial.Equal("what IsEnd says on an entry", named, false);
    const auto empty = Begin(trial, Of, {});
    trial.Gives("IsEnd at the end", CallISimpleMapIteratorIsEnd(empty.c, &numbered.value), TVX_OK);
    trial.Equal("what slot 10 says at the end", numbered.value, true);
}

template <Kind Of>
void OfObjectBase(Trial& trial)
{
    CheckBaseSlots(trial, *BeginFilled(trial, Of).iterator, "an iterator");
}

constexpr Check Checks[] = {
    {"slot-settings-map-iterator-7-get-key", "GetKey is called by its number.",
     "Slot 7 of ISimpleMapIterator is GetKey: it gives the current key, or null at the end.", GetKey<All>},
    {"slot-settings-map-iterator-8-get-value", "GetValue is called by its number.",
     "Slot 8 of ISimpleMapIterator is GetValue: it gives the current value, or null at the end.", GetValue<All>},
    {"slot-settings-map-iterator-9-next", "Next is called by its number.",
     "Slot 9 of ISimpleMapIterator is Next: it moves to the entry that follows, and gives -1 at the end.", Next<All>},
    {"slot-settings-map-iterator-10-is-end", "IsEnd is called by its number.",
     "Slot 10 of ISimpleMapIterator is IsEnd: it tells by its out whether the iterator is at the end.", IsEnd<All>},
    {"slot-settings-map-iterator-1-to-6-object-base", "The operations of IObjectBase are called by their numbers.",
     "Slots 1 to 6 of ISimpleMapIterator are those of IObjectBase.", OfObjectBase<All>},
    {"slot-no-sub-maps-iterator-7-get-key", "GetKey of an iterator without sub-maps is called by its number.",
     "Slot 7 of ISimpleMapIterator is GetKey: it gives the current key, or null at the end.", GetKey<NoSubMaps>},
    {"slot-no-sub-maps-iterator-8-get-value", "GetValue of an iterator without sub-maps is called by its number.",
     "Slot 8 of ISimpleMapIterator is GetValue: it gives the current value, or null at the end.", GetValue<NoSubMaps>},
    {"slot-no-sub-maps-iterator-9-next", "Next of an iterator without sub-maps is called by its number.",
     "Slot 9 of ISimpleMapIterator is Next: it moves past the entries below the current one, and gives -1 at the end.",
     Next<NoSubMaps>},
    {"slot-no-sub-maps-iterator-10-is-end", "IsEnd of an iterator without sub-maps is called by its number.",
     "Slot 10 of ISimpleMapIterator is IsEnd: it tells by its out whether the iterator is at the end.",
     IsEnd<NoSubMaps>},
    {"slot-no-sub-maps-iterator-1-to-6-object-base",
     "The operations of IObjectBase of an iterator without sub-maps are called by their numbers.",
     "Slots 1 to 6 of ISimpleMapIterator are those of IObjectBase.", OfObjectBase<NoSubMaps>},
};

}  // namespace

extern const Family SlotsOfIteratorFamily = {"slots", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
