// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/LetteredCollection.h"

#include <algorithm>

namespace tvx::check
{

namespace
{

// A call by an index on ABC, and what is held then.
struct Indexed
{
    std::uint32_t index;
    const char* expected;
};

// A call with two items on ABA, and what is held then.
struct Paired
{
    char item;
    char before;
    const char* expected;
};

void Insert(Trial& trial, const char* letters, const Indexed& row)
{
    LetteredCollection collection(trial, letters);
    collection.Does("Insert(" + Show(row.index) + ", D) into " + letters, TVX_OK, row.expected,
                    [&](ICollection2& it) { return it.Insert(row.index, collection.GetItem('D')); });
}

void InsertsAtAnIndex(Trial& trial)
{
    for (const Indexed& row : {Indexed{0, "DABC"}, {1, "ADBC"}, {2, "ABDC"}})
        Insert(trial, "ABC", row);
}

void InsertsBeyondTheEndAtTheEnd(Trial& trial)
{
    for (const Indexed& row : {Indexed{3, "ABCD"}, {4, "ABCD"}, {99, "ABCD"}, {0xFFFFFFFF, "ABCD"}})
        Insert(trial, "ABC", row);
    Insert(trial, "", {7, "D"});
}

void InsertsBeforeTheFirstPlace(Trial& trial)
{
    for (const Paired& row : {Paired{'C', 'A', "CABA"}, {'C', 'B', "ACBA"}, {'B', 'A', "BABA"}, {'-', 'B', "A-BA"}})
    {
        LetteredCollection collection(trial, "ABA");
        collection.Does("InsertBefore(" + NameLetter(row.item) + ", " + row.before + ") into ABA", TVX_OK, row.expected,
                        [&](ICollection2& it)
                        { return it.InsertBefore(collection.GetItem(row.item), collection.GetItem(row.before)); });
    }
}

void RemovesByIndex(Trial& trial)
{
    for (const Indexed& row : {Indexed{0, "BC"}, {1, "AC"}, {2, "AB"}})
    {
        LetteredCollection collection(trial, "ABC");
        collection.Does("RemoveAt(" + Show(row.index) + ") of ABC", TVX_OK, row.expected,
                        [&](ICollection2& it) { return it.RemoveAt(row.index); });
    }
}

void RemovesTheLast(Trial& trial)
{
    LetteredCollection collection(trial, "AB-A");
    for (const char* const rest : {"AB-", "AB", "A", ""})
        collection.Does("RemoveLast", TVX_OK, rest, [](ICollection2& it) { return it.RemoveLast(); });
}

void RemovesTheFirstPlaceOnly(Trial& trial)
{
    LetteredCollection collection(trial, "ABAB");
    for (const char* const rest : {"AAB", "AA"})
        collection.Does("Remove of B", TVX_OK, rest,
                        [&](ICollection2& it) { return it.Remove(collection.GetItem('B')); });
}

// The collection had the only reference.
void DropsTheLastReference(Trial& trial)
{
    bool died = false;
    auto item = MakeRef<ProbeObject>(&died);
    const auto collection = MakeCollection(trial);
    trial.Gives("Add", collection->Add(item.Get()), TVX_OK);
    item = nullptr;
    trial.Equal("the death of an item that only its collection holds", died, false);
    trial.Gives("RemoveAt(0)", collection->RemoveAt(0), TVX_OK);
    trial.Equal("the death of such an item when it is removed", died, true);
}

void ClearsEverything(Trial& trial)
{
    LetteredCollection collection(trial, "AB-A");
    for (const char* const what : {"Clear", "Clear of an empty collection"})
        collection.Does(what, TVX_OK, "", [](ICollection2& it) { return it.Clear(); });
    collection.Does("Add after Clear", TVX_OK, "B", [&](ICollection2& it) { return it.Add(collection.GetItem('B')); });
}

void GrowsAndShrinks(Trial& trial)
{
    std::string letters;
    for (int index = 0; index < 1000; ++index)
        letters += "ABCDEFG-"[index * index % 8];
    LetteredCollection collection(trial, letters);
    collection.Does("Clear of a thousand items", TVX_OK, "", [](ICollection2& it) { return it.Clear(); });
}

std::uint32_t ChooseIndex(Random& random, const std::string& letters)
{
    return random.Below(static_cast<std::uint32_t>(letters.size()) + 3);
}

void InsertSomewhere(Trial& trial, LetteredCollection& collection, std::string& letters)
{
    const auto index = ChooseIndex(trial.GetRandom(), letters);
    const char letter = "ABCD-"[trial.GetRandom().Below(5)];
    const auto what = "Insert(" + Show(index) + ", " + NameLetter(letter) + ") into " + letters;
    letters.insert(std::min<std::size_t>(index, letters.size()), 1, letter);
    collection.Does(what, TVX_OK, letters,
                    [&](ICollection2& it) { return it.Insert(index, collection.GetItem(letter)); });
}

void RemoveSomewhere(Trial& trial, LetteredCollection& collection, std::string& letters)
{
    const auto index = trial.GetRandom().Below(static_cast<std::uint32_t>(letters.size()));
    const auto what = "RemoveAt(" + Show(index) + ") of " + letters;
    letters.erase(index, 1);
    collection.Does(what, TVX_OK, letters, [&](ICollection2& it) { return it.RemoveAt(index); });
}

void MoveSomewhere(Trial& trial, LetteredCollection& collection, std::string& letters)
{
    const auto from = trial.GetRandom().Below(static_cast<std::uint32_t>(letters.size()));
    const auto to = ChooseIndex(trial.GetRandom(), letters);
    const auto what = "Move(" + Show(from) + ", " + Show(to) + ") in " + letters;
    const char moved = letters[from];
    letters.insert(std::min<std::size_t>(to, letters.size()), 1, moved);
    letters.erase(to < from ? from + 1 : from, 1);
    collection.Does(what, TVX_OK, letters, [&](ICollection2& it) { return it.Move(from, to); });
}

void AgreesWithAModel(Trial& trial)
{
    std::string letters;
    LetteredCollection collection(trial, letters);
    for (int change = 0; change < 200; ++change)
    {
        const auto kind = trial.GetRandom().Below(5);
        if (letters.empty() || (kind < 2 && letters.size() < 30))
            InsertSomewhere(trial, collection, letters);
        else if (kind == 2)
            RemoveSomewhere(trial, collection, letters);
        else
            MoveSomewhere(trial, collection, letters);
    }
    collection.Drop();
}

constexpr Check Checks[] = {
    {"value-collection-insert-at-an-index", "An item is inserted at each index of three.",
     "Insert gives 0, puts the item where the index says, and moves what stood there and behind it up.",
     InsertsAtAnIndex},
    {"value-collection-insert-beyond-the-end-appends", "An item is inserted at and beyond the end.",
     "No index is refused by Insert: at or beyond the end it appends.", InsertsBeyondTheEndAtTheEnd},
    {"value-collection-insert-before-an-item", "Items are inserted before others, one of which stands twice.",
     "InsertBefore puts the item, which may be null or there already, in front of the first place of the other.",
     InsertsBeforeTheFirstPlace},
    {"value-collection-remove-at-an-index", "The item at each index of three is removed.",
     "RemoveAt gives 0, closes the gap, and releases the item.", RemovesByIndex},
    {"value-collection-remove-last-takes-the-last", "A collection of four is emptied by RemoveLast.",
     "RemoveLast removes the item of the last index, also a null one.", RemovesTheLast},
    {"value-collection-remove-takes-the-first-place", "An item that stands twice is removed twice.",
     "Remove takes away the first place of the item only, with one reference.", RemovesTheFirstPlaceOnly},
    {"value-collection-removal-drops-the-last-reference", "An item that nobody else holds is added and removed.",
     "The collection's reference keeps an item alive, and its removal leaves none behind.", DropsTheLastReference},
    {"value-collection-clear-removes-everything", "Clear is called twice, then an item is added.",
     "Clear gives 0, releases each item once for each place, and leaves a collection that works.", ClearsEverything},
    {"value-collection-grows-to-a-thousand", "A thousand items are added and cleared.",
     "A collection grows as items come, and keeps their order and references.", GrowsAndShrinks},
    {"value-collection-agrees-with-a-model", "Two hundred random insertions, removals and moves are made.",
     "After any sequence of changes the items stand as the changes say, each with one reference for each place.",
     AgreesWithAModel},
};

}  // namespace

extern const Family ChangesOfCollectionFamily = {"values", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
