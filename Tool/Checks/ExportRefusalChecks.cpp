// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/KnownIds.h"
#include "Tool/Checks/NearMisses.h"
#include "Tool/Checks/Queries.h"

#include <algorithm>

namespace tvx::check
{

namespace
{

// Asks with an object of the check's own in the out, which has to be null afterwards.
void ExpectRefused(Trial& trial, const char* id, const std::string& what)
{
    const auto before = MakeRef<BareObject>();
    IObjectBase* out = before.Get();
    trial.Gives("GetExport of " + what, trial.Load().GetEntryPoint()(id, &out), TVX_E_FAIL);
    trial.Same("the out of GetExport of " + what, out, nullptr);
    trial.Equal("the count of what stood in the out of GetExport before", before->GetRefCount(), 1u);
}

// Of the texts, those that are no export are asked for. Gives how many.
int ExpectAllRefused(Trial& trial, const std::vector<std::string>& texts, const std::string& what)
{
    const auto ids = GetExportIds(trial);
    int asked = 0;
    for (const auto& text : texts)
    {
        if (std::find(ids.begin(), ids.end(), text) != ids.end())
            continue;
        ExpectRefused(trial, text.c_str(), what + " " + Show(text));
        ++asked;
    }
    return asked;
}

void RefuseUnknownIds(Trial& trial)
{
    ExpectAllRefused(trial, {"unknown", "com.example.NobodyExportsThis/1.0", "GetExport", "*", std::string(5000, 'x')},
                     "the unknown id");
}

void RefuseTheEmptyId(Trial& trial)
{
    ExpectRefused(trial, "", "the empty id");
}

void RefuseOtherCases(Trial& trial)
{
    for (const auto& id : GetExportIds(trial))
        ExpectAllRefused(trial, GetOtherCases(id), "an id in another case,");
}

void RefuseLongerIds(Trial& trial)
{
    for (const auto& id : GetExportIds(trial))
        ExpectAllRefused(trial, GetLonger(id), "an id with a character more,");
}

void RefuseShorterIds(Trial& trial)
{
    for (const auto& id : GetExportIds(trial))
    {
        ExpectAllRefused(trial, GetPrefixes(id), "the beginning of an id,");
        ExpectAllRefused(trial, {id.substr(1)}, "an id without its first character,");
    }
}

void RefuseOtherVersions(Trial& trial)
{
    for (const auto& id : GetExportIds(trial))
        ExpectAllRefused(trial, GetOtherVersions(id), "an id with another version,");
}

void RefuseContracts(Trial& trial)
{
    int asked = 0;
    for (const auto& offered : trial.GetDocument().exports)
        asked += ExpectAllRefused(trial, offered.contracts, "the contract");
    if (asked == 0)
        trial.Skip("the module has no contract whose identifier is not an export's, too");
}

void RefuseFormats(Trial& trial)
{
    int asked = 0;
    for (const auto& offered : trial.GetDocument().exports)
    {
        if (!offered.metadata.serid.empty())
            asked += ExpectAllRefused(trial, {offered.metadata.serid}, "the format");
    }
    if (asked == 0)
        trial.Skip("the module declares no format whose identifier is not an export's, too");
}

void RefuseInterfaces(Trial& trial)
{
    ExpectAllRefused(trial, {std::begin(KnownIds), std::end(KnownIds)}, "the interface");
}

void RefuseANullId(Trial& trial)
{
    ExpectRefused(trial, nullptr, "a null id");
}

void RefuseANullOut(Trial& trial)
{
    const auto getExport = trial.Load().GetEntryPoint();
    for (const auto& [id, object] : GetExports(trial))
    {
        const auto count = object->GetRefCount();
        trial.Gives("GetExport of " + id + " with a null out", getExport(id.c_str(), nullptr), TVX_E_FAIL);
        trial.Equal("the count of " + id + " after GetExport with a null out", object->GetRefCount(), count);
    }
    trial.Gives("GetExport of an unknown id with a null out", getExport("unknown", nullptr), TVX_E_FAIL);
    trial.Gives("GetExport of a null id with a null out", getExport(nullptr, nullptr), TVX_E_FAIL);
}

void LeaveTheExportsAlone(Trial& trial)
{
    for (const auto& [id, object] : GetExports(trial))
    {
        const auto count = object->GetRefCount();
        ExpectRefused(trial, "unknown", "an unknown id");
        trial.Equal("the count of " + id + " after a failed GetExport", object->GetRefCount(), count);
        trial.Same("the export " + id + " after a failed GetExport", trial.GetExport(id).Get(), object.Get());
    }
}

constexpr const char ExactRule[] = "An export is found by exactly the bytes of its identifier; everything else gives "
                                   "-1 and a null out, without a word on standard output.";

constexpr Check Checks[] = {
    {"export-unknown-id-is-refused", "Identifiers are asked for that the module does not list.", ExactRule,
     RefuseUnknownIds},
    {"export-empty-id-is-refused", "The empty identifier is asked for.", ExactRule, RefuseTheEmptyId},
    {"export-id-in-another-case-is-refused", "Each letter of each identifier is put into the other case.", ExactRule,
     RefuseOtherCases},
    {"export-longer-id-is-refused", "Each identifier is asked for with a character more.", ExactRule, RefuseLongerIds},
    {"export-shorter-id-is-refused", "Each identifier is asked for with characters less.", ExactRule, RefuseShorterIds},
    {"export-id-of-another-version-is-refused", "Each identifier is asked for with versions that it does not have.",
     "A version is part of the identifier, compared as text: no other version stands in for it.", RefuseOtherVersions},
    {"export-contract-is-no-export-id", "The contracts of the module are asked for.",
     "A contract says what an export fulfils and is no way to ask for it: GetExport gives -1 and a null out.",
     RefuseContracts},
    {"export-format-is-no-export-id", "The formats that the module declares are asked for.",
     "A format belongs to what an export writes and is no way to ask for it: GetExport gives -1 and a null out.",
     RefuseFormats},
    {"export-interface-is-no-export-id", "The framework's interface identifiers are asked for.",
     "Interfaces are asked of objects, not of the module: GetExport gives -1 and a null out.", RefuseInterfaces},
    {"export-null-id-is-refused", "A null identifier is asked for.",
     "A null identifier is as good as an unknown one: -1 and a null out, in silence.", RefuseANullId},
    {"export-null-out-is-refused", "GetExport is called with a null out.",
     "Without a place for the object GetExport gives -1, in silence, for known identifiers as well, and adds no "
     "reference.",
     RefuseANullOut},
    {"export-refusal-leaves-exports-alone", "Each export is looked at before and after a failed GetExport.",
     "A refusal changes nothing: counts stay, and the exports are given as before.", LeaveTheExportsAlone},
};

}  // namespace

extern const Family ExportRefusalFamily = {"exports", nullptr, Needs::Module, Checks};

}  // namespace tvx::check
