// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/MacroLines.h"
#include "Tool/Checks/SettingsMaps.h"

namespace tvx::check
{

namespace
{

// The call on a map out of batch updating mode with one entry, "a\x", which it leaves as it is.
template <class Call>
void ReportsNull(Trial& trial, const std::string& what, const char* macro, Result expected, Call&& call)
{
    const auto map = MakeImmediateSimpleMap(trial);
    Fill(trial, *map, {{"a\\x", "5"}});
    trial.Reports(what, macro, expected, [&] { return call(*map); });
    ExpectEntries(trial, "a map after " + what, *map, {"a\\x=5"});
    trial.Equal("the batch updating mode after " + what, IsBatchUpdating(trial, *map), false);
}

void GetSubMapOfANullPath(Trial& trial)
{
    const Ref<ISimpleMap> mark = MakeSimpleMap(trial);
    ISimpleMap* out = mark.Get();
    ReportsNull(trial, "GetSubMap with a null path", "TVX_RETURN_FAIL_IF_NULL", TVX_E_FAIL,
                [&](ISimpleMap& map) { return map.GetSubMap(nullptr, &out); });
    trial.Same("the out of GetSubMap with a null path, which stays untouched,", out, mark.Get());
}

void GetSubMapIntoNull(Trial& trial)
{
    for (const char* const path : {"a", "absent"})
        ReportsNull(trial, "GetSubMap with a null out", "TVX_RETURN_FAIL_IF_NULL", TVX_E_FAIL,
                    [&](ISimpleMap& map) { return map.GetSubMap(path, nullptr); });
}

void SetSubMapOfANullPath(Trial& trial)
{
    const auto source = MakeFilledMap(trial, {{"y", "1"}});
    ReportsNull(trial, "SetSubMap with a null path", "TVX_RETURN_FAIL_IF_NULL", TVX_E_FAIL,
                [&](ISimpleMap& map) { return map.SetSubMap(nullptr, source.Get()); });
}

void SetSubMapFromNull(Trial& trial)
{
    ReportsNull(trial, "SetSubMap with a null source", "TVX_RETURN_FAIL_IF_NULL", TVX_E_FAIL,
                [](ISimpleMap& map) { return map.SetSubMap("a", nullptr); });
}

void SetObjectOfNull(Trial& trial)
{
    ReportsNull(trial, "SetObject with a null object", "TVX_RETURN_FAIL_IF_NULL", TVX_E_FAIL,
                [](ISimpleMap& map) { return map.SetObject("a\\x", nullptr); });
}

// The text is read first, by GetString.
void GetObjectOfANullKey(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    Ref<IObject> out;
    ReportsInOrder(trial, "GetObject with a null key", {"TVX_RETURN_EPOINTER_IF_NULL", "TVX_FORWARD_FAILURE"},
                   TVX_E_POINTER, [&] { return map->GetObject(nullptr, out.Receive()); });
    trial.Same("the out of GetObject with a null key", out.Get(), nullptr);
}

void HasKeyIntoNull(Trial& trial)
{
    for (const char* const key : {"a\\x", "absent"})
        ReportsNull(trial, "HasKey with a null out", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                    [&](ISimpleMap& map) { return map.HasKey(key, nullptr); });
}

void CloneIntoNull(Trial& trial)
{
    ReportsNull(trial, "Clone with a null out", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                [](ISimpleMap& map) { return map.Clone(nullptr); });
}

void GetBatchUpdatingModeIntoNull(Trial& trial)
{
    ReportsNull(trial, "GetBatchUpdatingMode with a null out", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                [](ISimpleMap& map) { return map.GetBatchUpdatingMode(nullptr); });
}

void CreateIntoNull(Trial& trial)
{
    const auto factory = trial.Get<IFactory>(SimpleMapExport);
    trial.Gives("Create of a map with a null out", factory->Create(nullptr), TVX_E_POINTER);
}

constexpr const char SubMapRule[] =
    "A null path, out or source gives -1 with one report line of TVX_RETURN_FAIL_IF_NULL, and nothing is written.";
constexpr const char PreconditionRule[] = "A null out gives -7 with one report line of TVX_CHECK_PRECOND.";

constexpr Check Checks[] = {
    {"report-settings-map-get-sub-map-null-path", "GetSubMap is called with a null path.", SubMapRule,
     GetSubMapOfANullPath},
    {"report-settings-map-get-sub-map-null-out", "GetSubMap is called with a null out, with and without entries.",
     SubMapRule, GetSubMapIntoNull},
    {"report-settings-map-set-sub-map-null-path", "SetSubMap is called with a null path.", SubMapRule,
     SetSubMapOfANullPath},
    {"report-settings-map-set-sub-map-null-source", "SetSubMap is called with a null source.", SubMapRule,
     SetSubMapFromNull},
    {"report-settings-map-get-object-null-key", "GetObject is called with a null key.",
     "GetObject reads the text by GetString and passes its failure on: -4, reported by TVX_RETURN_EPOINTER_IF_NULL and "
     "again by TVX_FORWARD_FAILURE.",
     GetObjectOfANullKey},
    {"report-settings-map-set-object-null-object", "SetObject is called with a null object.",
     "A null object gives -1 with one report line of TVX_RETURN_FAIL_IF_NULL, and the entry stays as it is.",
     SetObjectOfNull},
    {"report-settings-map-has-key-null-out", "HasKey is called with a null out, for a present and an absent key.",
     PreconditionRule, HasKeyIntoNull},
    {"report-settings-map-clone-null-out", "Clone is called with a null out.", PreconditionRule, CloneIntoNull},
    {"report-settings-map-get-batch-updating-mode-null-out", "GetBatchUpdatingMode is called with a null out.",
     PreconditionRule, GetBatchUpdatingModeIntoNull},
    {"report-settings-map-create-stays-silent", "Create of the factory is called with a null out.",
     "A null out gives -4 without a report line, as wherever an object is made.", CreateIntoNull},
};

}  // namespace

extern const Family ReportsOfWholeSettingsMapFamily = {"report-lines", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
