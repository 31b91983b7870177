// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/LetteredCollection.h"

#include <utility>

namespace tvx::check
{

namespace
{

constexpr std::uint32_t NoIndex = 0xFFFFFFFF;

void FindsTheFirstPlace(Trial& trial)
{
    LetteredCollection collection(trial, "ABAC");
    const std::pair<char, std::uint32_t> places[] = {{'A', 0}, {'B', 1}, {'C', 3}};
    for (const auto& [letter, place] : places)
    {
        std::uint32_t index = NoIndex;
        trial.Gives("IndexOf", collection->IndexOf(collection.GetItem(letter), &index), TVX_OK);
        trial.Equal(std::string("the index of ") + letter + " in ABAC", index, place);
    }
    collection.Holds("IndexOf", "ABAC");
}

void FindsNoIndexOfAnAbsentItem(Trial& trial)
{
    for (const char* const letters : {"", "AB-"})
    {
        LetteredCollection collection(trial, letters);
        std::uint32_t index = 7;
        trial.Gives("IndexOf of an absent item", collection->IndexOf(collection.GetItem('C'), &index), TVX_E_FAIL);
        trial.Equal("the index of an absent item", index, NoIndex);
    }
}

void Contains(Trial& trial, LetteredCollection& collection, char letter, bool expected)
{
    bool contained = !expected;
    trial.Gives("Contains", collection->Contains(collection.GetItem(letter), &contained), TVX_OK);
    trial.Equal("Contains of " + NameLetter(letter), contained, expected);
}

void TellsWhatItContains(Trial& trial)
{
    LetteredCollection collection(trial, "AB");
    Contains(trial, collection, 'A', true);
    Contains(trial, collection, 'B', true);
    Contains(trial, collection, 'C', false);
    collection.Holds("Contains", "AB");
}

void NeverContainsNull(Trial& trial)
{
    LetteredCollection without(trial, "A");
    Contains(trial, without, '-', false);
    LetteredCollection with(trial, "A-");
    Contains(trial, with, '-', false);
}

// The two faces are of one object, which would be the same if it were asked.
void ComparesItemsByTheirPointers(Trial& trial)
{
    const auto factory = trial.Get<ICollectionFactory>(CollectionExport);
    const auto other = trial.QueryAs<IDeserializable>(factory, "the collection factory");
    const auto collection = MakeCollection(trial);
    trial.Gives("Add", collection->Add(factory.Get()), TVX_OK);
    std::uint32_t index = 7;
    trial.Gives("IndexOf of another face of an item", collection->IndexOf(other.Get(), &index), TVX_E_FAIL);
    trial.Equal("the index of another face of an item", index, NoIndex);
    trial.Gives("IndexOf of the face that was added", collection->IndexOf(factory.Get(), &index), TVX_OK);
}

void TellsWhomItNotifiesOf(Trial& trial)
{
    LetteredCollection collection(trial, "A-");
    const std::pair<char, Result> answers[] = {{'A', TVX_OK}, {'B', TVX_E_FAIL}, {'-', TVX_E_FAIL}};
    for (const auto& answer : answers)
        collection.Does("NotifyUpdated of " + NameLetter(answer.first), answer.second, "A-",
                        [&](ICollection2& it) { return it.NotifyUpdated(collection.GetItem(answer.first)); });
}

constexpr Check Checks[] = {
    {"value-collection-index-of-first-place", "Items, one of them twice there, are looked for.",
     "IndexOf gives 0 and the index of the item's first place.", FindsTheFirstPlace},
    {"value-collection-index-of-absent-item", "An item that is not there is looked for.",
     "IndexOf of an absent item gives -1 without a report, and the index 0xFFFFFFFF.", FindsNoIndexOfAnAbsentItem},
    {"value-collection-contains-what-it-holds", "Present and absent items are asked for by Contains.",
     "Contains gives 0 in both cases and says whether the item is there.", TellsWhatItContains},
    {"value-collection-never-contains-null", "Contains is asked for null, with and without a null item.",
     "Null is never found: Contains gives 0 and false, even where a null item stands.", NeverContainsNull},
    {"value-collection-compares-pointers", "An item is looked for by another of its interfaces.",
     "Items are the same when their pointers are: the collection asks no item who it is.",
     ComparesItemsByTheirPointers},
    {"value-collection-notify-updated-answers", "NotifyUpdated is called for a present, an absent and a null item.",
     "NotifyUpdated gives 0 for an item that is there, else -1 without a report; it changes nothing.",
     TellsWhomItNotifiesOf},
};

}  // namespace

extern const Family SearchesOfCollectionFamily = {"values", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
