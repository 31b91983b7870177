// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/LetteredCollection.h"

namespace tvx::check
{

namespace
{

constexpr const char Precondition[] = "TVX_CHECK_PRECOND";
constexpr const char FailIf[] = "TVX_RETURN_FAIL_IF";

// Indices that are not there in a collection of so many.
std::vector<std::uint32_t> GetIndicesBeyond(std::uint32_t count)
{
    return {count, count + 1, 0xFFFFFFFF};
}

void ReportsGetItemBeyondTheEnd(Trial& trial)
{
    LetteredCollection collection(trial, "ABC");
    const auto mark = MakeRef<ProbeObject>();
    for (const auto index : GetIndicesBeyond(3))
    {
        IObject* out = mark.Get();
        collection.Refuses("GetItem(" + Show(index) + ") of 3", {FailIf}, TVX_E_FAIL,
                           [&](ICollection2& it) { return it.GetItem(index, &out); });
        trial.Same("the out of GetItem beyond the end, which is left alone,", out, static_cast<IObject*>(mark.Get()));
    }
}

void LooksAtTheIndexBeforeOut(Trial& trial)
{
    LetteredCollection collection(trial, "ABC");
    collection.Refuses("GetItem(5) of 3 with a null out", {FailIf}, TVX_E_FAIL,
                       [](ICollection2& it) { return it.GetItem(5, nullptr); });
}

void ReportsRemoveLastOfNone(Trial& trial)
{
    LetteredCollection collection(trial, "");
    collection.Refuses("RemoveLast of an empty collection", {FailIf}, TVX_E_FAIL,
                       [](ICollection2& it) { return it.RemoveLast(); });
}

void ReportsRemoveAtBeyondTheEnd(Trial& trial)
{
    for (const std::string letters : {"", "ABC"})
    {
        LetteredCollection collection(trial, letters);
        for (const auto index : GetIndicesBeyond(static_cast<std::uint32_t>(letters.size())))
            collection.Refuses("RemoveAt(" + Show(index) + ") of " + Show(letters.size()), {Precondition},
                               TVX_E_PRECONDITION, [&](ICollection2& it) { return it.RemoveAt(index); });
    }
}

void ReportsMoveFromBeyondTheEnd(Trial& trial)
{
    LetteredCollection collection(trial, "ABC");
    for (const auto from : GetIndicesBeyond(3))
    {
        for (const std::uint32_t to : {0u, from})
            collection.Refuses("Move(" + Show(from) + ", " + Show(to) + ") in 3", {Precondition}, TVX_E_PRECONDITION,
                               [&](ICollection2& it) { return it.Move(from, to); });
    }
}

void ReportsANullOutOfGetEventsEnabled(Trial& trial)
{
    LetteredCollection collection(trial, "A");
    collection.Refuses("GetEventsEnabled with a null out", {Precondition}, TVX_E_PRECONDITION,
                       [](ICollection2& it) { return it.GetEventsEnabled(nullptr); });
}

void ReportsANullOutOfContains(Trial& trial)
{
    LetteredCollection collection(trial, "A-");
    for (const char letter : {'A', 'B', '-'})
        collection.Refuses("Contains of " + NameLetter(letter) + " with a null out", {Precondition}, TVX_E_PRECONDITION,
                           [&](ICollection2& it) { return it.Contains(collection.GetItem(letter), nullptr); });
}

void ReportsIndexOfNull(Trial& trial)
{
    LetteredCollection collection(trial, "A-");
    std::uint32_t index = 7;
    collection.Refuses("IndexOf of null", {Precondition}, TVX_E_PRECONDITION,
                       [&](ICollection2& it) { return it.IndexOf(nullptr, &index); });
    trial.Equal("the out of IndexOf of null, which is left alone,", index, 7u);
    for (const char letter : {'A', 'B', '-'})
        collection.Refuses("IndexOf of " + NameLetter(letter) + " with a null out", {Precondition}, TVX_E_PRECONDITION,
                           [&](ICollection2& it) { return it.IndexOf(collection.GetItem(letter), nullptr); });
}

constexpr Check Checks[] = {
    {"report-collection-get-item-beyond-the-end", "GetItem is called with indices that are not there.",
     "An index not below the count gives -1 with a report of TVX_RETURN_FAIL_IF, and out is left alone.",
     ReportsGetItemBeyondTheEnd},
    {"report-collection-get-item-checks-the-index-first", "GetItem is called beyond the end with a null out.",
     "The index is checked before out: -1 with a report, not the silent -4 of a null out.", LooksAtTheIndexBeforeOut},
    {"report-collection-remove-last-of-none", "RemoveLast is called on an empty collection.",
     "Without items RemoveLast gives -1 with a report of TVX_RETURN_FAIL_IF.", ReportsRemoveLastOfNone},
    {"report-collection-remove-at-beyond-the-end", "RemoveAt is called with indices that are not there.",
     "An index not below the count gives -7 with a report of TVX_CHECK_PRECOND, and nothing changes.",
     ReportsRemoveAtBeyondTheEnd},
    {"report-collection-move-from-beyond-the-end", "Move is called from indices that are not there.",
     "A source not below the count gives -7 with a report of TVX_CHECK_PRECOND, also when the target is the same.",
     ReportsMoveFromBeyondTheEnd},
    {"report-collection-events-enabled-null-out", "GetEventsEnabled is called with a null out.",
     "A null out gives -7 with a report of TVX_CHECK_PRECOND.", ReportsANullOutOfGetEventsEnabled},
    {"report-collection-contains-null-out", "Contains is called with a null out for present, absent and null items.",
     "A null out gives -7 with a report of TVX_CHECK_PRECOND, whatever the item.", ReportsANullOutOfContains},
    {"report-collection-index-of-null", "IndexOf is called with a null item and with a null out.",
     "A null item or out gives -7 with one report of TVX_CHECK_PRECOND, even where a null item stands.",
     ReportsIndexOfNull},
};

}  // namespace

extern const Family ReportsOfCollectionFamily = {"report-lines", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
