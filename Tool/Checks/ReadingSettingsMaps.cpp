// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Serialising.h"
#include "Tool/Checks/SettingsMapEvents.h"
#include "Tool/Checks/SettingsMaps.h"

namespace tvx::check
{

namespace
{

Ref<WatchedReader> MakeReader(const Lines& texts)
{
    auto reader = MakeRef<WatchedReader>();
    reader->items.assign(texts.begin(), texts.end());
    return reader;
}

// What is read of the texts, and that the reader is left alone afterwards.
void ExpectRead(Trial& trial, const Lines& texts, const Texts& entries, const Lines& calls)
{
    const auto reader = MakeReader(texts);
    const auto map = ReadAs<ISimpleMap5>(trial, SimpleMapExport, *reader);
    ExpectEntries(trial, "what was read", *map, entries);
    trial.Equal("the calls that read", reader->calls, calls);
    trial.Equal("the references left on the texts read", reader->CountReferencesLeft(), 0u);
    trial.Equal("the reader's reference count afterwards", reader->GetRefCount(), 1u);
    trial.Equal("the reference count of what was read", map->GetRefCount(), 1u);
}

// Reading fails, and nothing of what was read before is left.
void ExpectRefusedReader(Trial& trial, const Ref<WatchedReader>& reader)
{
    ExpectRefused(trial, SimpleMapExport, *reader, "TVX_RETURN_FAIL_IF_FAILED");
    trial.Equal("the references left on the texts read", reader->CountReferencesLeft(), 0u);
}

void ReadsPairs(Trial& trial)
{
    ExpectRead(trial, {"b", "2", "a", "1"}, {"a=1", "b=2"},
               {"BeginArray Values", "ReadString", "ReadString", "ReadString", "ReadString", "EndArray"});
}

void ReadsNothing(Trial& trial)
{
    ExpectRead(trial, {}, {}, {"BeginArray Values", "EndArray"});
}

void IgnoresAnOddItem(Trial& trial)
{
    ExpectRead(trial, {"a", "1", "b"}, {"a=1"}, {"BeginArray Values", "ReadString", "ReadString", "EndArray"});
    ExpectRead(trial, {"a"}, {}, {"BeginArray Values", "EndArray"});
}

void KeepsTheLaterOfDuplicates(Trial& trial)
{
    const auto reader = MakeReader({"a", "1", "b", "2", "a", "3"});
    ExpectEntries(trial, "what was read", *ReadAs<ISimpleMap5>(trial, SimpleMapExport, *reader), {"a=3", "b=2"});
}

void ReadsNoMoreThanAnnounced(Trial& trial)
{
    const auto reader = MakeReader({"a", "1", "b", "2"});
    reader->announced = 2;
    ExpectEntries(trial, "what was read", *ReadAs<ISimpleMap5>(trial, SimpleMapExport, *reader), {"a=1"});
}

// What the switch out of batch updating mode tells shows the state of a map.
void ExpectState(Trial& trial, const Lines& texts, const Lines& expected)
{
    const auto map = ReadAs<ISimpleMap5>(trial, SimpleMapExport, *MakeReader(texts));
    trial.Expect(IsBatchUpdating(trial, *map), "a map that was read to be in batch updating mode", "it out of it");
    SettingsMapListener listener(*map);
    trial.Gives("SetBatchUpdatingMode(false)", SwitchOff(*map), TVX_OK);
    trial.Equal("the events of switching batch updating mode off", listener.Take(), expected);
}

void DeliversAPendingChange(Trial& trial)
{
    ExpectState(trial, {"a", "1", "b", "2"}, {SwitchedOff, Changed});
}

void DeliversNothingPendingWithoutEntries(Trial& trial)
{
    ExpectState(trial, {}, {SwitchedOff});
}

void FailsWithoutASequence(Trial& trial)
{
    const auto reader = MakeReader({"a", "1"});
    reader->beginResult = -42;
    ExpectRefusedReader(trial, reader);
    trial.Equal("the calls on the reader", reader->calls, Lines{"BeginArray Values"});
}

void FailsAtAKey(Trial& trial)
{
    const auto reader = MakeReader({"a", "1"});
    reader->announced = 4;
    ExpectRefusedReader(trial, reader);
    trial.Equal("the number of texts read before the failing one", reader->texts.size(), std::size_t{2});
}

void FailsAtAValue(Trial& trial)
{
    const auto reader = MakeReader({"a", "1", "b"});
    reader->announced = 4;
    ExpectRefusedReader(trial, reader);
    trial.Equal("the number of texts read before the failing one", reader->texts.size(), std::size_t{3});
}

void FailsAtAnItemOfAnotherKind(Trial& trial)
{
    const auto reader = MakeReader({"a"});
    reader->items.emplace_back(std::int32_t{1});
    ExpectRefusedReader(trial, reader);
}

void ReportsNullPointers(Trial& trial)
{
    ExpectNullPointersReported(trial, SimpleMapExport);
}

void RefusesHostileCounts(Trial& trial)
{
    ExpectHostileCountsRefused(trial, SimpleMapExport);
}

constexpr Check Checks[] = {
    {"serialise-settings-map-reads-pairs", "A sequence of four texts is read.",
     "The sequence \"Values\" is read as keys and values in turn and ended; no reference is left on what was read.",
     ReadsPairs},
    {"serialise-settings-map-reads-empty-sequence", "An empty sequence is read.", "It gives an empty map.",
     ReadsNothing},
    {"serialise-settings-map-ignores-odd-item", "Sequences of three texts and of one are read.",
     "An odd last item is not even read.", IgnoresAnOddItem},
    {"serialise-settings-map-keeps-later-of-duplicates", "A sequence with the same key twice is read.",
     "A key that comes again keeps the later value.", KeepsTheLaterOfDuplicates},
    {"serialise-settings-map-reads-no-more-than-announced", "A reader has more texts than it announces.",
     "The announced count is read and nothing behind it.", ReadsNoMoreThanAnnounced},
    {"serialise-settings-map-read-has-pending-change", "A map that was read is switched out of batch updating mode.",
     "A map that was read is in batch updating mode, and its entries are a change that is still to be told.",
     DeliversAPendingChange},
    {"serialise-settings-map-read-empty-has-nothing-pending", "An empty map that was read is switched.",
     "A map that was read without entries is in batch updating mode with nothing to tell.",
     DeliversNothingPendingWithoutEntries},
    {"serialise-settings-map-fails-without-sequence", "The reader fails to begin the sequence.",
     "It gives -1 with a report of TVX_RETURN_FAIL_IF_FAILED, whatever code the reader gave; the out is untouched.",
     FailsWithoutASequence},
    {"serialise-settings-map-fails-at-a-key", "The reader fails to read the second key.",
     "It gives -1 with one report; what was read before is released.", FailsAtAKey},
    {"serialise-settings-map-fails-at-a-value", "The reader fails to read the second value.",
     "It gives -1 with one report; what was read before is released, its key among it.", FailsAtAValue},
    {"serialise-settings-map-fails-at-an-item-of-another-kind", "The reader holds a number in place of a value.",
     "An item that the reader cannot give as a text ends the reading with -1 and one report.",
     FailsAtAnItemOfAnotherKind},
    {"serialise-settings-map-read-reports-null-pointers", "Deserialize is called with a null reader and a null out.",
     "Each gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL before anything is read.", ReportsNullPointers},
    {"serialise-settings-map-refuses-hostile-counts", "Readers announce billions of items and have none.",
     "The first failing read ends the reading at once: nothing is made by the announced count.", RefusesHostileCounts},
};

}  // namespace

extern const Family ReadingSettingsMapFamily = {"serialising", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
