// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/CollectionEvents.h"
#include "Tool/Checks/Serialising.h"

namespace tvx::check
{

namespace
{

constexpr const char Format[] = "com.talvere.general.tvx.GenericCollectionImplementationFormat/1.0";

// The calls that write so many items.
Lines Sequence(std::size_t count)
{
    Lines calls(count + 2, "WriteObject");
    calls.front() = "BeginArray Values";
    calls.back() = "EndArray";
    return calls;
}

// A reader of these items; null for an empty one.
Ref<ScriptedReader> MakeReader(const std::vector<IObjectBase*>& items)
{
    auto reader = MakeRef<ScriptedReader>();
    for (auto* const item : items)
        reader->items.emplace_back(Ref<IObjectBase>(item));
    return reader;
}

// The references besides those of the check, on all items together.
std::uint32_t CountReferences(const LetteredItems& items)
{
    return items.a->GetRefCount() + items.b->GetRefCount() + items.c->GetRefCount() - 3;
}

void WritesInOrder(Trial& trial)
{
    const LetteredItems items;
    const auto collection = MakeFilledCollection(trial, items);
    trial.Gives("Add", collection->Add(items.a), TVX_OK);
    trial.Gives("Add", collection->Add(nullptr), TVX_OK);
    const auto writer = MakeRef<RecordingWriter>();
    const auto face = trial.QueryAs<ISerializable>(collection, "a collection");
    trial.Gives("Serialize", face->Serialize(writer.Get()), TVX_OK);
    trial.Equal("the calls that write", writer->calls, Sequence(5));
    std::string written;
    for (const auto& item : writer->objects)
        written += items.GetName(item.Get()) + " ";
    trial.Equal("the items written", written, "A B C A null ");
}

void WritesNothingForAnEmptyCollection(Trial& trial)
{
    ExpectWritten(trial, "an empty collection", MakeCollection(trial), Sequence(0));
}

void ReportsANullWriter(Trial& trial)
{
    ExpectNullWriterReported(trial, MakeCollection(trial));
}

void IgnoresAFailingWriter(Trial& trial)
{
    const LetteredItems items;
    ExpectWrittenByAFailingWriter(trial, "a collection", MakeFilledCollection(trial, items), Sequence(3));
}

void NamesItsFormat(Trial& trial)
{
    ExpectFormat(trial, CollectionExport, MakeCollection(trial), Format);
}

void ReadsWhatWasWritten(Trial& trial)
{
    const LetteredItems items;
    {
        const auto collection = MakeFilledCollection(trial, items);
        trial.Gives("Add", collection->Add(items.a), TVX_OK);
        const auto copy = Copy(trial, CollectionExport, collection);
        trial.Equal("what the copy holds", items.Show(*copy), "A B C A");
        trial.Equal("the reference count of the copy", copy->GetRefCount(), 1u);
    }
    trial.Equal("the references left on the items", CountReferences(items), 0u);
}

void ReadsAndEnds(Trial& trial)
{
    const LetteredItems items;
    const auto reader = MakeReader({items.a, items.b});
    const auto collection = ReadAs<ICollection2>(trial, CollectionExport, *reader);
    trial.Equal("what the collection holds", items.Show(*collection), "A B");
    trial.Equal("the calls that read", reader->calls,
                (Lines{"BeginArray Values", "ReadObject", "ReadObject", "EndArray"}));
    trial.Equal("the reader's reference count afterwards", reader->GetRefCount(), 1u);
}

void ReadsNothing(Trial& trial)
{
    const auto collection = ReadAs<ICollection2>(trial, CollectionExport, *MakeReader({}));
    trial.Equal("the number of items read of an empty sequence", collection->GetCount(), 0u);
}

void GivesEventsEnabled(Trial& trial)
{
    const LetteredItems items;
    const auto collection = ReadAs<ICollection2>(trial, CollectionExport, *MakeReader({items.a}));
    CollectionListener listener(*collection, items);
    bool enabled = false;
    trial.Gives("GetEventsEnabled", collection->GetEventsEnabled(&enabled), TVX_OK);
    trial.Equal("whether events of a collection that was read are enabled", enabled, true);
    trial.Gives("Add", collection->Add(items.b), TVX_OK);
    trial.Equal("the events of a change", listener.Take(), (Lines{"ItemAdded B", "Updated B"}));
}

void RefusesANullItem(Trial& trial)
{
    const LetteredItems items;
    const auto bare = MakeRef<BareObject>();
    for (auto* const refused : {static_cast<IObjectBase*>(nullptr), static_cast<IObjectBase*>(bare.Get())})
        ExpectRefused(trial, CollectionExport, *MakeReader({items.a, refused}), "TVX_RETURN_FAIL_IF_NULL");
    trial.Equal("the references left on the items before it", CountReferences(items), 0u);
    trial.Equal("the reference count of the refused item", bare->GetRefCount(), 1u);
}

void FailsWithoutASequence(Trial& trial)
{
    const auto reader = MakeReader({});
    reader->beginResult = -42;
    ExpectRefused(trial, CollectionExport, *reader, "TVX_RETURN_FAIL_IF_FAILED");
    trial.Equal("the calls on the reader", reader->calls, Lines{"BeginArray Values"});
}

void FailsAtAnItem(Trial& trial)
{
    const LetteredItems items;
    {
        const auto reader = MakeReader({items.a, items.b});
        reader->announced = 3;
        ExpectRefused(trial, CollectionExport, *reader, "TVX_RETURN_FAIL_IF_FAILED");
    }
    trial.Equal("the references left on the items before it", CountReferences(items), 0u);
}

void ReportsNullPointers(Trial& trial)
{
    ExpectNullPointersReported(trial, CollectionExport);
}

void RefusesHostileCounts(Trial& trial)
{
    ExpectHostileCountsRefused(trial, CollectionExport);
}

constexpr Check Checks[] = {
    {"serialise-collection-writes-in-order", "A collection with an item twice and a null item is written.",
     "A collection writes the sequence \"Values\" of its items in their order, null as null.", WritesInOrder},
    {"serialise-collection-writes-empty-sequence", "An empty collection is written.",
     "An empty collection writes an empty sequence.", WritesNothingForAnEmptyCollection},
    {"serialise-collection-reports-null-writer", "A collection is given a null writer.",
     "A null writer gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL.", ReportsANullWriter},
    {"serialise-collection-ignores-failing-writer", "A collection is given a writer that fails with every call.",
     "What the writer answers is not looked at: everything is written, and Serialize gives 0.", IgnoresAFailingWriter},
    {"serialise-collection-names-its-format", "A collection and its factory are asked for the format id.",
     "Both give com.talvere.general.tvx.GenericCollectionImplementationFormat/1.0; a null out gives -4 without a "
     "report.",
     NamesItsFormat},
    {"serialise-collection-reads-what-was-written", "A collection is written and read back.",
     "What is read has the same items in the same order, and one reference on each.", ReadsWhatWasWritten},
    {"serialise-collection-reads-and-ends", "A sequence of two objects is read.",
     "The sequence \"Values\" is begun, read and ended.", ReadsAndEnds},
    {"serialise-collection-reads-empty-sequence", "An empty sequence is read.", "It gives an empty collection.",
     ReadsNothing},
    {"serialise-collection-read-has-events-enabled", "A collection that was read is changed.",
     "Its events are enabled, as those of any new collection.", GivesEventsEnabled},
    {"serialise-collection-refuses-null-item", "Sequences with null and with an object without IObject are read.",
     "Each gives -1 with a report of TVX_RETURN_FAIL_IF_NULL: null can be written but not read.", RefusesANullItem},
    {"serialise-collection-fails-without-sequence", "The reader fails to begin the sequence.",
     "It gives -1 with a report of TVX_RETURN_FAIL_IF_FAILED, whatever code the reader gave; the out is untouched.",
     FailsWithoutASequence},
    {"serialise-collection-fails-at-an-item", "The reader fails to read the third of three items.",
     "It gives -1 with one report, and the items read before are released.", FailsAtAnItem},
    {"serialise-collection-read-reports-null-pointers", "Deserialize is called with a null reader and a null out.",
     "Each gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL before anything is read.", ReportsNullPointers},
    {"serialise-collection-refuses-hostile-counts", "Readers announce billions of items and have none.",
     "The first failing read ends the reading at once: nothing is made by the announced count.", RefusesHostileCounts},
};

}  // namespace

extern const Family SerialisingCollectionFamily = {"serialising", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
