// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Serialising.h"

namespace tvx::check
{

namespace
{

constexpr const char Format[] = "com.talvere.general.tvx.GenericMapImplementationFormat/1.1";

// A map with one object under each of the keys, set in this order; null for no object.
Ref<IMap> MakeMapWith(Trial& trial, const Lines& keys, IObject* value)
{
    auto map = MakeMap(trial);
    for (const auto& key : keys)
        trial.Gives("SetValue", map->SetValue(key.c_str(), value), TVX_OK);
    return map;
}

// The calls that write the keys, each with a value behind it.
Lines Sequence(const Lines& keys)
{
    Lines calls{"BeginArray Values"};
    for (const auto& key : keys)
        calls.insert(calls.end(), {"WriteString " + key, "WriteObject"});
    calls.emplace_back("EndArray");
    return calls;
}

void WritesInByteOrder(Trial& trial)
{
    const auto value = MakeRef<ProbeObject>();
    const auto map = MakeMapWith(trial, {"\xC3\xA4", "ab", "a", "B", ""}, value.Get());
    ExpectWritten(trial, "a map", map, Sequence({"", "B", "a", "ab", "\xC3\xA4"}));
}

void WritesItsValues(Trial& trial)
{
    const auto first = MakeRef<ProbeObject>();
    const auto second = MakeRef<ProbeObject>();
    const auto map = MakeMap(trial);
    trial.Gives("SetValue", map->SetValue("b", second.Get()), TVX_OK);
    trial.Gives("SetValue", map->SetValue("a", first.Get()), TVX_OK);
    const auto writer = MakeRef<RecordingWriter>();
    trial.Gives("Serialize", trial.QueryAs<ISerializable>(map, "a map")->Serialize(writer.Get()), TVX_OK);
    trial.Equal("the number of objects written", writer->objects.size(), std::size_t{2});
    trial.Same("the value of the first key", writer->objects[0].Get(), first.Get());
    trial.Same("the value of the second key", writer->objects[1].Get(), second.Get());
    writer->objects.clear();
    trial.Equal("the reference count of a value afterwards", first->GetRefCount(), 2u);
}

void PassesNullOn(Trial& trial)
{
    const auto map = MakeMapWith(trial, {"key"}, nullptr);
    const auto writer = MakeRef<RecordingWriter>();
    trial.Gives("Serialize", trial.QueryAs<ISerializable>(map, "a map")->Serialize(writer.Get()), TVX_OK);
    trial.Equal("the calls that write", writer->calls, Sequence({"key"}));
    trial.Equal("the number of objects written", writer->objects.size(), std::size_t{1});
    trial.Same("the value written", writer->objects[0].Get(), nullptr);
}

void WritesNothingForAnEmptyMap(Trial& trial)
{
    ExpectWritten(trial, "an empty map", MakeMap(trial), Sequence({}));
}

void ReportsANullWriter(Trial& trial)
{
    ExpectNullWriterReported(trial, MakeMap(trial));
}

void IgnoresAFailingWriter(Trial& trial)
{
    ExpectWrittenByAFailingWriter(trial, "a map", MakeMapWith(trial, {"a", "b"}, nullptr), Sequence({"a", "b"}));
}

void NamesItsFormat(Trial& trial)
{
    ExpectFormat(trial, MapExport, MakeMap(trial), Format);
}

void ReadsWhatWasWritten(Trial& trial)
{
    const auto value = MakeRef<ProbeObject>();
    {
        const auto map = MakeMapWith(trial, {"", "W\xC3\xB6rter", "a\\b"}, value.Get());
        const auto copy = Copy(trial, MapExport, map);
        ExpectWritten(trial, "the copy of a map", copy, Sequence({"", "W\xC3\xB6rter", "a\\b"}));
        for (const auto* const key : {"", "W\xC3\xB6rter", "a\\b"})
        {
            Ref<IObject> came;
            trial.Gives("GetValue of the copy", copy->GetValue(key, came.Receive()), TVX_S_VALUE);
            trial.Same("the value of the copy", came.Get(), value.Get());
        }
    }
    trial.Equal("the value's reference count afterwards", value->GetRefCount(), 1u);
}

constexpr Check Checks[] = {
    {"serialise-map-writes-in-byte-order", "A map with the keys B, a, ab, the empty one and one above 127 is written.",
     "A map writes the sequence \"Values\" of its keys and values in turn. Keys are ordered by their bytes without "
     "sign; "
     "of two that agree, the shorter one comes first.",
     WritesInByteOrder},
    {"serialise-map-writes-its-values", "A map with two objects is written.",
     "Each value is handed to the writer itself, behind its key, and no reference stays behind.", WritesItsValues},
    {"serialise-map-passes-null-on", "A map with a null value is written.", "A null value is handed on as null.",
     PassesNullOn},
    {"serialise-map-writes-empty-sequence", "An empty map is written.", "An empty map writes an empty sequence.",
     WritesNothingForAnEmptyMap},
    {"serialise-map-reports-null-writer", "A map is given a null writer.",
     "A null writer gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL.", ReportsANullWriter},
    {"serialise-map-ignores-failing-writer", "A map is given a writer that fails with every call.",
     "What the writer answers is not looked at: everything is written, and Serialize gives 0.", IgnoresAFailingWriter},
    {"serialise-map-names-its-format", "A map and its factory are asked for the format id.",
     "Both give com.talvere.general.tvx.GenericMapImplementationFormat/1.1; a null out gives -4 without a report.",
     NamesItsFormat},
    {"serialise-map-reads-what-was-written", "A map is written and read back.",
     "What is read has the same keys with the same objects.", ReadsWhatWasWritten},
};

}  // namespace

extern const Family SerialisingMapFamily = {"serialising", MapExport, Needs::Module, Checks};

}  // namespace tvx::check
