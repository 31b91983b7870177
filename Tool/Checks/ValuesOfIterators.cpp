// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/IteratorBench.h"

namespace tvx::check
{

namespace
{

using Texts = std::vector<std::string>;

void StandsAtTheEndOfAnEmptyMap(Trial& trial)
{
    for (const auto& kind : IteratorKinds)
    {
        const auto map = MakeMapOfKeys(trial, {});
        const auto iterator = MakeMapIterator(trial, kind, *map);
        IsIteratorAtEnd(trial, std::string("of an empty map by ") + kind.name, *iterator);
    }
}

void StaysAtTheEnd(Trial& trial)
{
    for (const auto& kind : IteratorKinds)
    {
        const auto map = MakeMapOfKeys(trial, {"a"});
        const auto iterator = MakeMapIterator(trial, kind, *map);
        trial.Gives("Next on the last entry", iterator->Next(), TVX_E_FAIL);
        trial.Gives("Next at the end", iterator->Next(), TVX_E_FAIL);
        IsIteratorAtEnd(trial, std::string("after Next at the end by ") + kind.name, *iterator);
    }
}

void GivesTheValueOfEachKey(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    const Texts values = {"", "one", "two words", "\xC3\xA4\n"};
    for (std::size_t index = 0; index < values.size(); ++index)
        trial.Gives("SetString", map->SetString(std::to_string(index).c_str(), values[index].c_str()), TVX_OK);
    for (const auto& kind : IteratorKinds)
    {
        const auto iterator = MakeMapIterator(trial, kind, *map);
        for (const auto& value : values)
        {
            trial.Equal("GetValue of " + Show(iterator->GetKey()), iterator->GetValue(), value);
            iterator->Next();
        }
    }
}

void SeesWritesBehindIt(Trial& trial)
{
    for (const auto& kind : IteratorKinds)
    {
        const auto map = MakeMapOfKeys(trial, {"b", "d"});
        const auto iterator = MakeMapIterator(trial, kind, *map);
        for (const char* const inserted : {"a", "c", "e"})
            trial.Gives("SetString during a walk", map->SetString(inserted, "text"), TVX_OK);
        trial.Equal("the keys of a map that got a, c and e while the walk stood on b",
                    GetIteratorKeys(trial, *iterator), Texts{"b", "c", "d", "e"});
    }
}

void SeesANewValue(Trial& trial)
{
    for (const auto& kind : IteratorKinds)
    {
        const auto map = MakeMapOfKeys(trial, {"a", "b"});
        const auto iterator = MakeMapIterator(trial, kind, *map);
        trial.Gives("SetString of the current key", map->SetString("a", "new text"), TVX_OK);
        trial.Equal("GetKey after the current entry was written", iterator->GetKey(), "a");
        trial.Equal("GetValue after the current entry was written", iterator->GetValue(), "new text");
        trial.Gives("Next after the current entry was written", iterator->Next(), TVX_OK);
        trial.Equal("GetKey after it", iterator->GetKey(), "b");
    }
}

void GivesKeysOfTheMap(Trial& trial)
{
    for (const auto& kind : IteratorKinds)
    {
        const auto map = MakeMapOfKeys(trial, {"first", "second"});
        auto iterator = MakeMapIterator(trial, kind, *map);
        const char* const key = iterator->GetKey();
        trial.Gives("Next", iterator->Next(), TVX_OK);
        trial.Equal("a key that the iterator has left", key, "first");
        iterator = nullptr;
        trial.Equal("a key whose iterator is gone", key, "first");
    }
}

void HoldsNothing(Trial& trial)
{
    for (const auto& kind : IteratorKinds)
    {
        const auto map = MakeMapOfKeys(trial, {"a"});
        const auto iterator = MakeMapIterator(trial, kind, *map);
        trial.Equal("IsUnique of a new iterator", iterator->IsUnique(), true);
        trial.Equal("the references on a map that is walked", map->GetRefCount(), 1u);
        const auto second = iterator;
        trial.Equal("IsUnique of an iterator with two references", iterator->IsUnique(), false);
        trial.Equal("the references on an iterator with two", iterator->GetRefCount(), 2u);
    }
}

void WalksAlone(Trial& trial)
{
    for (const auto& kind : IteratorKinds)
    {
        const auto map = MakeMapOfKeys(trial, {"a", "b"});
        const auto moved = MakeMapIterator(trial, kind, *map);
        const auto resting = MakeMapIterator(trial, kind, *map);
        trial.Gives("Next", moved->Next(), TVX_OK);
        trial.Equal("GetKey of the iterator that was moved", moved->GetKey(), "b");
        trial.Equal("GetKey of another iterator", resting->GetKey(), "a");
    }
}

void RefusesANullOut(Trial& trial)
{
    const auto map = MakeMapOfKeys(trial, {"a"});
    for (const auto& kind : IteratorKinds)
        trial.Gives(std::string(kind.name) + " with a null out", (*map.*kind.make)(nullptr), TVX_E_POINTER);
}

void ReportsANullOutOfIsEnd(Trial& trial)
{
    for (const auto& kind : IteratorKinds)
    {
        const auto map = MakeMapOfKeys(trial, {"a"});
        const auto iterator = MakeMapIterator(trial, kind, *map);
        for (const char* const where : {"on an entry", "at the end"})
        {
            trial.Reports(std::string("IsEnd with a null out ") + where, "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                          [&] { return iterator->IsEnd(nullptr); });
            iterator->Next();
        }
    }
}

constexpr Check Checks[] = {
    {"value-iterator-of-empty-map-is-at-its-end", "Empty maps are walked by both iterators.",
     "A new iterator of an empty map is at the end: IsEnd says so, and its key and value are null.",
     StandsAtTheEndOfAnEmptyMap},
    {"value-iterator-stays-at-the-end", "Next is called at the end.",
     "Next at the end gives -1 without a report and stays there, for both iterators.", StaysAtTheEnd},
    {"value-iterator-gives-the-values", "The values of a map are read in a walk.",
     "GetValue gives the text of the current entry, byte for byte.", GivesTheValueOfEachKey},
    {"value-iterator-sees-keys-inserted-behind-it", "Keys are written before and behind the place of an iterator.",
     "Writes keep iterators valid: a key inserted behind the current one is visited, one before it is not.",
     SeesWritesBehindIt},
    {"value-iterator-sees-new-values", "The entry that an iterator stands on is written.",
     "A write of the current entry leaves the iterator there, with the new value.", SeesANewValue},
    {"value-iterator-keys-belong-to-the-map", "A key is read after its iterator moved on, and after it is gone.",
     "The text of a key is owned by the map and stays valid as long as it.", GivesKeysOfTheMap},
    {"value-iterator-holds-nothing", "Iterators are made, and references are counted.",
     "An iterator counts its own references but holds none on its map, which it must not keep alive.", HoldsNothing},
    {"value-iterator-walks-alone", "One of two iterators of a map is moved.", "Each iterator has a place of its own.",
     WalksAlone},
    {"value-iterator-creation-refuses-null-out", "GetIterator and GetIteratorNoSubMaps are called with a null out.",
     "A null out gives -4 without a report.", RefusesANullOut},
};

constexpr Check ReportChecks[] = {
    {"report-iterator-is-end-null-out", "IsEnd is called with a null out by both iterators.",
     "A null out gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL, on an entry and at the end.",
     ReportsANullOutOfIsEnd},
};

}  // namespace

extern const Family ValuesOfIteratorFamily = {"values", SimpleMapExport, Needs::Module, Checks};
extern const Family ReportsOfIteratorFamily = {"report-lines", SimpleMapExport, Needs::Module, ReportChecks};

}  // namespace tvx::check
