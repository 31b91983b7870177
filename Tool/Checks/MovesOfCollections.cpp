// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/LetteredCollection.h"

namespace tvx::check
{

namespace
{

constexpr std::uint32_t Last = 0xFFFFFFFF;

// A move by indices, and the order then.
struct Indexed
{
    const char* letters;
    std::uint32_t from;
    std::uint32_t to;
    const char* expected;
};

void Move(Trial& trial, std::initializer_list<Indexed> rows)
{
    for (const auto& row : rows)
    {
        LetteredCollection collection(trial, row.letters);
        collection.Does("Move(" + Show(row.from) + ", " + Show(row.to) + ") in " + row.letters, TVX_OK, row.expected,
                        [&](ICollection2& it) { return it.Move(row.from, row.to); });
    }
}

void MovesInFrontOfTheTarget(Trial& trial)
{
    Move(trial, {{"ABC", 0, 2, "BAC"},
                 {"ABC", 2, 0, "CAB"},
                 {"ABC", 2, 1, "ACB"},
                 {"ABC", 1, 0, "BAC"},
                 {"ABCDE", 1, 4, "ACDBE"},
                 {"ABCDE", 3, 1, "ADBCE"}});
}

void MovesBeyondTheEndToTheEnd(Trial& trial)
{
    Move(trial, {{"ABC", 0, 3, "BCA"}, {"ABC", 0, 99, "BCA"}, {"ABC", 0, Last, "BCA"}, {"ABC", 1, 3, "ACB"}});
}

void MovesNowhere(Trial& trial)
{
    Move(trial, {{"ABC", 0, 0, "ABC"}, {"ABC", 1, 1, "ABC"}, {"ABC", 2, 2, "ABC"}, {"A", 0, 0, "A"}});
}

void MovesInFrontOfTheNext(Trial& trial)
{
    Move(trial, {{"ABC", 0, 1, "ABC"},
                 {"ABC", 1, 2, "ABC"},
                 {"ABC", 2, 3, "ABC"},
                 {"ABC", 2, Last, "ABC"},
                 {"A", 0, Last, "A"}});
}

void MovesNullItems(Trial& trial)
{
    Move(trial, {{"-AB", 0, 3, "AB-"}, {"AB-", 2, 0, "-AB"}, {"A-B-", 1, 4, "AB--"}});
}

void MovesOneOfSeveralPlaces(Trial& trial)
{
    Move(trial, {{"ABA", 2, 1, "AAB"}, {"ABA", 0, 2, "BAA"}});
}

// A move of the first place of an item.
struct ToIndex
{
    const char* letters;
    char item;
    std::uint32_t to;
    const char* expected;
};

void MovesAnItemToAnIndex(Trial& trial)
{
    for (const auto& row : {ToIndex{"ABC", 'A', 2, "BAC"},
                            {"ABC", 'C', 0, "CAB"},
                            {"ABC", 'B', 99, "ACB"},
                            {"ABC", 'B', 1, "ABC"},
                            {"ABCA", 'A', Last, "BCAA"},
                            {"BABA", 'A', 0, "ABBA"}})
    {
        LetteredCollection collection(trial, row.letters);
        collection.Does(std::string("MoveItem(") + row.item + ", " + Show(row.to) + ") in " + row.letters, TVX_OK,
                        row.expected,
                        [&](ICollection2& it) { return it.MoveItem(collection.GetItem(row.item), row.to); });
    }
}

// A move in front of another item.
struct ToItem
{
    const char* letters;
    char item;
    char before;
    const char* expected;
};

void MoveBefore(Trial& trial, std::initializer_list<ToItem> rows)
{
    for (const auto& row : rows)
    {
        LetteredCollection collection(trial, row.letters);
        collection.Does("MoveBefore(" + NameLetter(row.item) + ", " + NameLetter(row.before) + ") in " + row.letters,
                        TVX_OK, row.expected,
                        [&](ICollection2& it)
                        { return it.MoveBefore(collection.GetItem(row.item), collection.GetItem(row.before)); });
    }
}

void MovesAnItemBeforeAnother(Trial& trial)
{
    MoveBefore(trial, {{"ABC", 'A', 'C', "BAC"},
                       {"ABC", 'C', 'A', "CAB"},
                       {"ABC", 'B', 'A', "BAC"},
                       {"ABC", 'A', 'B', "ABC"},
                       {"ABC", 'B', 'B', "ABC"},
                       {"BACA", 'C', 'A', "BCAA"}});
}

void MovesAnItemBeforeNullToTheEnd(Trial& trial)
{
    MoveBefore(trial, {{"ABC", 'A', '-', "BCA"}, {"ABC", 'C', '-', "ABC"}, {"A-B", 'A', '-', "-BA"}});
}

constexpr Check Checks[] = {
    {"value-collection-move-goes-in-front-of-the-target", "Items are moved forwards and backwards by their indices.",
     "Move puts the item in front of the one that stood at the target before the move; its references stay as they "
     "are.",
     MovesInFrontOfTheTarget},
    {"value-collection-move-beyond-the-end-goes-last", "Items are moved to the end and beyond it.",
     "A target at or beyond the end means the end: no target is refused.", MovesBeyondTheEndToTheEnd},
    {"value-collection-move-to-its-own-place", "Items are moved to where they stand.",
     "A move to the item's own index gives 0 and changes nothing.", MovesNowhere},
    {"value-collection-move-before-the-next-keeps-the-order", "Items are moved to the index behind their own.",
     "An item stands in front of its neighbour already: the move gives 0 and the order stays.", MovesInFrontOfTheNext},
    {"value-collection-move-takes-null-items", "Null items are moved by their indices.",
     "Move works by index, also for a null item.", MovesNullItems},
    {"value-collection-move-takes-the-place-of-the-index", "An item that stands twice is moved by each index.",
     "Move moves the place that the index names, not another one of the same item.", MovesOneOfSeveralPlaces},
    {"value-collection-move-item-moves-the-first-place", "Items are moved by MoveItem.",
     "MoveItem moves the first place of the item as Move does.", MovesAnItemToAnIndex},
    {"value-collection-move-before-an-item", "Items are moved in front of others.",
     "MoveBefore moves the first place of the item directly in front of the first place of the other.",
     MovesAnItemBeforeAnother},
    {"value-collection-move-before-null-goes-last", "Items are moved in front of null.",
     "MoveBefore null moves the item to the end, also where a null item stands.", MovesAnItemBeforeNullToTheEnd},
};

}  // namespace

extern const Family MovesOfCollectionFamily = {"values", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
