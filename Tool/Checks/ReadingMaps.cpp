// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Serialising.h"

namespace tvx::check
{

namespace
{

// A reader with the keys, and the value behind each.
Ref<WatchedReader> MakeReader(const Lines& keys, const Ref<IObjectBase>& value)
{
    auto reader = MakeRef<WatchedReader>();
    for (const auto& key : keys)
    {
        reader->items.emplace_back(key);
        reader->items.emplace_back(value);
    }
    return reader;
}

void ExpectValue(Trial& trial, IMap& map, const char* key, Result result, const void* value)
{
    Ref<IObject> came;
    trial.Gives("GetValue of " + Show(key), map.GetValue(key, came.Receive()), result);
    trial.Same("the value of " + Show(key), came.Get(), value);
}

// Reading fails, and nothing of what was read before is left; the sequence stays open.
void ExpectRefusedReader(Trial& trial, const Ref<WatchedReader>& reader, const char* macro)
{
    ExpectRefused(trial, MapExport, *reader, macro);
    trial.Equal("the references left on the keys", reader->CountReferencesLeft(), 0u);
    trial.Expect(!reader->calls.empty() && reader->calls.back() != "EndArray",
                 "the sequence not to be ended after a failure", "EndArray");
}

void ReadsPairs(Trial& trial)
{
    const auto value = MakeRef<ProbeObject>();
    const auto reader = MakeReader({"b", "a"}, value);
    {
        const auto map = ReadAs<IMap>(trial, MapExport, *reader);
        ExpectValue(trial, *map, "a", TVX_S_VALUE, value.Get());
        ExpectValue(trial, *map, "b", TVX_S_VALUE, value.Get());
        trial.Equal("the reference count of what was read", map->GetRefCount(), 1u);
        trial.Equal("the value's reference count with the map", value->GetRefCount(), 5u);
    }
    trial.Equal("the calls that read", reader->calls,
                (Lines{"BeginArray Values", "ReadString", "ReadObject", "ReadString", "ReadObject", "EndArray"}));
    trial.Equal("the references left on the keys", reader->CountReferencesLeft(), 0u);
    trial.Equal("the value's reference count without the map", value->GetRefCount(), 3u);
}

void ReadsNothing(Trial& trial)
{
    const auto reader = MakeReader({}, nullptr);
    ExpectWritten(trial, "a map that was read of nothing", ReadAs<IMap>(trial, MapExport, *reader),
                  {"BeginArray Values", "EndArray"});
    trial.Equal("the calls that read", reader->calls, (Lines{"BeginArray Values", "EndArray"}));
}

void IgnoresAnOddItem(Trial& trial)
{
    const auto value = MakeRef<ProbeObject>();
    const auto reader = MakeReader({"a", "b", "c"}, value);
    reader->items.pop_back();
    const auto map = ReadAs<IMap>(trial, MapExport, *reader);
    ExpectValue(trial, *map, "b", TVX_S_VALUE, value.Get());
    ExpectValue(trial, *map, "c", TVX_S_NOKEY, nullptr);
    trial.Equal("the number of keys read", reader->texts.size(), std::size_t{2});
}

void ReadsNothingOfASingleItem(Trial& trial)
{
    const auto reader = MakeReader({"a"}, nullptr);
    reader->items.pop_back();
    ExpectWritten(trial, "a map that was read of one item", ReadAs<IMap>(trial, MapExport, *reader),
                  {"BeginArray Values", "EndArray"});
    trial.Equal("the calls that read", reader->calls, (Lines{"BeginArray Values", "EndArray"}));
}

void KeepsTheLaterOfDuplicates(Trial& trial)
{
    const auto first = MakeRef<ProbeObject>();
    const auto second = MakeRef<ProbeObject>();
    const auto reader = MakeReader({"key"}, first);
    reader->items.emplace_back("key");
    reader->items.emplace_back(Ref<IObjectBase>(second));
    const auto map = ReadAs<IMap>(trial, MapExport, *reader);
    ExpectValue(trial, *map, "key", TVX_S_VALUE, second.Get());
    trial.Equal("the reference count of the earlier value", first->GetRefCount(), 2u);
}

void RefusesANullValue(Trial& trial)
{
    const auto value = MakeRef<ProbeObject>();
    const auto reader = MakeReader({"a"}, value);
    reader->items.emplace_back("b");
    reader->items.emplace_back(Ref<IObjectBase>());
    ExpectRefusedReader(trial, reader, "TVX_RETURN_FAIL_IF_NULL");
    trial.Equal("the reference count of the value before it", value->GetRefCount(), 2u);
}

void RefusesAValueWithoutItsFace(Trial& trial)
{
    const auto bare = MakeRef<BareObject>();
    ExpectRefusedReader(trial, MakeReader({"a"}, bare), "TVX_RETURN_FAIL_IF_NULL");
    trial.Equal("the reference count of the refused value", bare->GetRefCount(), 1u);
}

void FailsWithoutASequence(Trial& trial)
{
    const auto reader = MakeReader({}, nullptr);
    reader->beginResult = -42;
    ExpectRefusedReader(trial, reader, "TVX_RETURN_FAIL_IF_FAILED");
    trial.Equal("the calls on the reader", reader->calls, Lines{"BeginArray Values"});
}

void FailsAtAKey(Trial& trial)
{
    const auto value = MakeRef<ProbeObject>();
    const auto reader = MakeReader({"a"}, value);
    reader->announced = 4;
    ExpectRefusedReader(trial, reader, "TVX_RETURN_FAIL_IF_FAILED");
    trial.Equal("the reference count of the value before it", value->GetRefCount(), 2u);
}

void FailsAtAValue(Trial& trial)
{
    const auto value = MakeRef<ProbeObject>();
    const auto reader = MakeReader({"a", "b"}, value);
    reader->items.pop_back();
    reader->announced = 4;
    ExpectRefusedReader(trial, reader, "TVX_RETURN_FAIL_IF_FAILED");
    trial.Equal("the reference count of the value before it", value->GetRefCount(), 2u);
}

void ReportsNullPointers(Trial& trial)
{
    ExpectNullPointersReported(trial, MapExport);
}

void RefusesHostileCounts(Trial& trial)
{
    ExpectHostileCountsRefused(trial, MapExport);
}

constexpr Check Checks[] = {
    {"serialise-map-reads-pairs", "A sequence of two keys and values is read.",
     "The sequence \"Values\" is read as keys and values in turn and ended; the map has one reference on each value.",
     ReadsPairs},
    {"serialise-map-reads-empty-sequence", "An empty sequence is read.", "It gives an empty map.", ReadsNothing},
    {"serialise-map-ignores-odd-item", "A sequence of five items is read.",
     "It gives two pairs; an odd last item is not even read.", IgnoresAnOddItem},
    {"serialise-map-reads-nothing-of-one-item", "A sequence of one item is read.",
     "It gives an empty map, and the item is not read.", ReadsNothingOfASingleItem},
    {"serialise-map-keeps-later-of-duplicates", "A sequence with the same key twice is read.",
     "A key that comes again keeps the later value, and the earlier one is released.", KeepsTheLaterOfDuplicates},
    {"serialise-map-refuses-null-value", "A sequence with a null value is read.",
     "It gives -1 with a report of TVX_RETURN_FAIL_IF_NULL: null can be written but not read.", RefusesANullValue},
    {"serialise-map-refuses-value-without-face", "A sequence with a value that does not answer IObject is read.",
     "It gives -1 with a report of TVX_RETURN_FAIL_IF_NULL.", RefusesAValueWithoutItsFace},
    {"serialise-map-fails-without-sequence", "The reader fails to begin the sequence.",
     "It gives -1 with a report of TVX_RETURN_FAIL_IF_FAILED, whatever code the reader gave; the out is untouched.",
     FailsWithoutASequence},
    {"serialise-map-fails-at-a-key", "The reader fails to read the second key.",
     "It gives -1 with one report; what was read before is released, and the sequence is not ended.", FailsAtAKey},
    {"serialise-map-fails-at-a-value", "The reader fails to read the second value.",
     "It gives -1 with one report; what was read before is released, its key among it, and the sequence is not ended.",
     FailsAtAValue},
    {"serialise-map-read-reports-null-pointers", "Deserialize is called with a null reader and a null out.",
     "Each gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL before anything is read.", ReportsNullPointers},
    {"serialise-map-refuses-hostile-counts", "Readers announce billions of items and have none.",
     "The first failing read ends the reading at once: nothing is made by the announced count.", RefusesHostileCounts},
};

}  // namespace

extern const Family ReadingMapFamily = {"serialising", MapExport, Needs::Module, Checks};

}  // namespace tvx::check
