// SPDX-License-Identifier: MIT
#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Serialising.h"
#include "Tool/Checks/SettingsMaps.h"

namespace tvx::check
{

namespace
{

constexpr const char Format[] = "com.talvere.general.tvx.GenericSimpleMapImplementationFormat/1.1";

// The calls that write these items.
Lines Sequence(const Lines& items)
{
    Lines calls{"BeginArray Values"};
    for (const auto& item : items)
        calls.push_back("WriteString " + item);
    calls.emplace_back("EndArray");
    return calls;
}

void WritesInKeyOrder(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"b", "2"}, {"a", "1"}});
    ExpectWritten(trial, "a settings map", map, Sequence({"a", "1", "b", "2"}));
}

void WritesInByteOrder(Trial& trial)
{
    const auto map =
        MakeFilledMap(trial, {{"\xC3\xA4", "5"}, {"ab", "4"}, {"a\\b", "3"}, {"a", "2"}, {"B", "1"}, {"", "0"}});
    ExpectWritten(trial, "a settings map", map,
                  Sequence({"", "0", "B", "1", "a", "2", "a\\b", "3", "ab", "4", "\xC3\xA4", "5"}));
}

void WritesNothingForAnEmptyMap(Trial& trial)
{
    ExpectWritten(trial, "an empty settings map", MakeSimpleMap(trial), Sequence({}));
}

void WritesNumbersAsTexts(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    trial.Gives("SetInt", map->SetInt("int", -5), TVX_OK);
    trial.Gives("SetDouble", map->SetDouble("double", 3.14159265), TVX_OK);
    ExpectWritten(trial, "a settings map", map, Sequence({"double", "3.14159", "int", "-5"}));
}

void WritesEntriesOnly(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    const auto object = MakeRef<ProbeObject>();
    const auto container = trial.QueryAs<IUserDataContainer>(map, "a settings map");
    trial.Gives("SetUserData", container->SetUserData("name", object.Get()), TVX_OK);
    trial.Gives("SetString", map->SetString("key", "value"), TVX_OK);
    ExpectWritten(trial, "a map with user data", map, Sequence({"key", "value"}));
}

void ReportsANullWriter(Trial& trial)
{
    ExpectNullWriterReported(trial, MakeSimpleMap(trial));
}

void IgnoresAFailingWriter(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a", "1"}, {"b", "2"}});
    ExpectWrittenByAFailingWriter(trial, "a settings map", map, Sequence({"a", "1", "b", "2"}));
}

void NamesItsFormat(Trial& trial)
{
    ExpectFormat(trial, SimpleMapExport, MakeSimpleMap(trial), Format);
}

void ReadsWhatWasWritten(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"", "empty"}, {"a\\b", ""}, {"W\xC3\xB6rter", "x\ny"}, {"z", "0.5"}});
    const auto copy = Copy<ISimpleMap5>(trial, SimpleMapExport, map);
    ExpectEntries(trial, "the copy of a settings map", *copy, GetEntries(trial, *map));
    trial.Gives("SetString of the copy", copy->SetString("z", "other"), TVX_OK);
    ExpectText(trial, *map, "z", "0.5");
}

constexpr Check Checks[] = {
    {"serialise-settings-map-writes-in-key-order", "A map with the keys b and a is written.",
     "A settings map writes the sequence \"Values\" of its keys and values in turn, in the order of the keys.",
     WritesInKeyOrder},
    {"serialise-settings-map-writes-in-byte-order",
     "A map with keys of capitals, paths and bytes above 127 is written.",
     "Keys are ordered by their bytes without sign; of two that agree, the shorter one comes first.",
     WritesInByteOrder},
    {"serialise-settings-map-writes-empty-sequence", "An empty map is written.",
     "An empty map writes an empty sequence.", WritesNothingForAnEmptyMap},
    {"serialise-settings-map-writes-numbers-as-texts", "A map with an integer and a double is written.",
     "Numbers are written as the texts that the map keeps: decimal, and with at most six significant digits.",
     WritesNumbersAsTexts},
    {"serialise-settings-map-writes-entries-only", "A map with user data, out of batch updating mode, is written.",
     "Neither the mode nor user data is written, nor anything else besides the entries.", WritesEntriesOnly},
    {"serialise-settings-map-reports-null-writer", "A map is given a null writer.",
     "A null writer gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL.", ReportsANullWriter},
    {"serialise-settings-map-ignores-failing-writer", "A map is given a writer that fails with every call.",
     "What the writer answers is not looked at: everything is written, and Serialize gives 0.", IgnoresAFailingWriter},
    {"serialise-settings-map-names-its-format", "A map and its factory are asked for the format id.",
     "Both give com.talvere.general.tvx.GenericSimpleMapImplementationFormat/1.1; a null out gives -4 without a "
     "report.",
     NamesItsFormat},
    {"serialise-settings-map-reads-what-was-written", "A map is written and read back.",
     "What is read has the same keys and texts, and is a map of its own.", ReadsWhatWasWritten},
};

}  // namespace

extern const Family SerialisingSettingsMapFamily = {"serialising", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
