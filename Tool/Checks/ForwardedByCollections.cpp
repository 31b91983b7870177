// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/LetteredCollection.h"

namespace tvx::check
{

namespace
{

using Macros = std::vector<std::string>;

constexpr const char Precondition[] = "TVX_CHECK_PRECOND";
constexpr const char Forward[] = "TVX_FORWARD_FAILURE";
constexpr const char FailIf[] = "TVX_RETURN_FAIL_IF";

// The search for null reports itself, and whoever passes its failure on reports it again.
Macros GetLinesOfNull()
{
    return {Precondition, Forward};
}

void ReportsInsertBeforeNothing(Trial& trial)
{
    LetteredCollection collection(trial, "AB-");
    collection.Refuses("InsertBefore an absent item", {Forward}, TVX_E_FAIL,
                       [&](ICollection2& it)
                       { return it.InsertBefore(collection.GetItem('C'), collection.GetItem('D')); });
    collection.Refuses("InsertBefore null", GetLinesOfNull(), TVX_E_PRECONDITION,
                       [&](ICollection2& it) { return it.InsertBefore(collection.GetItem('C'), nullptr); });
}

void ReportsRemoveOfNothing(Trial& trial)
{
    LetteredCollection collection(trial, "AB-");
    collection.Refuses("Remove of an absent item", {Forward}, TVX_E_FAIL,
                       [&](ICollection2& it) { return it.Remove(collection.GetItem('C')); });
    collection.Refuses("Remove of null", GetLinesOfNull(), TVX_E_PRECONDITION,
                       [](ICollection2& it) { return it.Remove(nullptr); });
}

void ReportsMoveItemOfNothing(Trial& trial)
{
    LetteredCollection collection(trial, "AB-");
    collection.Refuses("MoveItem of an absent item", {Forward}, TVX_E_FAIL,
                       [&](ICollection2& it) { return it.MoveItem(collection.GetItem('C'), 0); });
    collection.Refuses("MoveItem of null", GetLinesOfNull(), TVX_E_PRECONDITION,
                       [](ICollection2& it) { return it.MoveItem(nullptr, 0); });
}

// The place before which to move is looked for first.
void ReportsMoveBeforeNothing(Trial& trial)
{
    LetteredCollection collection(trial, "AB-");
    IObject* const absent = collection.GetItem('C');
    IObject* const present = collection.GetItem('A');
    const auto refuses =
        [&](const std::string& what, const Macros& macros, Result expected, IObject* item, IObject* before)
    {
        collection.Refuses("MoveBefore of " + what, macros, expected,
                           [&](ICollection2& it) { return it.MoveBefore(item, before); });
    };
    refuses("an item and an absent one", {Forward}, TVX_E_FAIL, present, absent);
    refuses("an absent item and one that is there", {Forward}, TVX_E_FAIL, absent, present);
    refuses("two absent items", {Forward}, TVX_E_FAIL, absent, absent);
    refuses("an absent item and null", {Forward}, TVX_E_FAIL, absent, nullptr);
    refuses("null and an item", GetLinesOfNull(), TVX_E_PRECONDITION, nullptr, present);
    refuses("null and an absent item", {Forward}, TVX_E_FAIL, nullptr, absent);
    refuses("null and null", GetLinesOfNull(), TVX_E_PRECONDITION, nullptr, nullptr);
}

// The number of removals is settled beforehand, so that a handler which removes an item leaves one too many.
void ForwardsTheFailureOfARemoval(Trial& trial)
{
    const auto handler = MakeRef<RecordingHandler>();
    LetteredCollection collection(trial, "ABC");
    handler->action = [&](const SeenEvent&)
    {
        if (handler->events.size() == 1)
            collection->RemoveAt(0);
    };
    collection->SubscribeItemRemoved(handler.Get(), 0, true);
    ReportsInOrder(trial, "Clear while a handler removes an item", {FailIf, Forward}, TVX_E_FAIL,
                   [&] { return collection->Clear(); });
    collection.Holds("a Clear that failed", "");
    collection->SubscribeItemRemoved(handler.Get(), 0, false);
}

constexpr Check Checks[] = {
    {"report-collection-insert-before-nothing", "InsertBefore is called with an absent item and null to insert before.",
     "The result of IndexOf is passed on with a report of TVX_FORWARD_FAILURE: -1 for an absent item, -7 for null, "
     "which IndexOf reports first.",
     ReportsInsertBeforeNothing},
    {"report-collection-remove-of-nothing", "Remove is called with an absent item and null.",
     "The result of IndexOf is passed on with a report of TVX_FORWARD_FAILURE: -1 for an absent item, -7 for null, "
     "which IndexOf reports first.",
     ReportsRemoveOfNothing},
    {"report-collection-move-item-of-nothing", "MoveItem is called with an absent item and null.",
     "The result of IndexOf is passed on with a report of TVX_FORWARD_FAILURE: -1 for an absent item, -7 for null, "
     "which IndexOf reports first.",
     ReportsMoveItemOfNothing},
    {"report-collection-move-before-nothing", "MoveBefore is called with absent and null items in both places.",
     "The second item is looked for first unless it is null, then the first one; the first search that fails ends the "
     "call with its result and one report of TVX_FORWARD_FAILURE.",
     ReportsMoveBeforeNothing},
    {"report-collection-clear-forwards-a-failure", "A handler removes an item while Clear is at work.",
     "Clear removes as many items as there were; the first removal that fails ends it with its result, reported with "
     "TVX_FORWARD_FAILURE after the removal's own report.",
     ForwardsTheFailureOfARemoval},
};

}  // namespace

extern const Family ForwardedByCollectionFamily = {"report-lines", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
