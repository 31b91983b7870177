// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Queries.h"
#include "Tool/Checks/Threads.h"

#include <map>

namespace tvx::check
{

namespace
{

// What one export is known by: its IObjectBase face, by which two pointers are told to be one object.
Ref<IObjectBase> GetIdentity(Trial& trial, const ExportedObject& exported)
{
    return trial.QueryAs<IObjectBase>(exported.object, "the export " + exported.id);
}

void AreAllGiven(Trial& trial)
{
    const auto getExport = trial.Load().GetEntryPoint();
    for (const auto& id : GetExportIds(trial))
    {
        Ref<IObjectBase> object;
        trial.Gives("GetExport of " + id, getExport(id.c_str(), object.Receive()), TVX_OK);
        trial.Expect(static_cast<bool>(object), "the out of GetExport of " + id + " to be an object", "null");
    }
}

void AreTheSameEveryTime(Trial& trial)
{
    for (const auto& exported : GetExports(trial))
    {
        const auto identity = GetIdentity(trial, exported);
        for (int round = 0; round < 10; ++round)
        {
            const auto again = GetIdentity(trial, {exported.id, trial.GetExport(exported.id)});
            trial.Same("the export " + exported.id + ", asked for again,", again.Get(), identity.Get());
        }
    }
}

void AreTheSameOnAnotherThread(Trial& trial)
{
    const auto getExport = trial.Load().GetEntryPoint();
    for (const auto& exported : GetExports(trial))
    {
        ExportedObject elsewhere{exported.id, nullptr};
        Result result = TVX_E_FAIL;
        RunElsewhere([&] { result = getExport(exported.id.c_str(), elsewhere.object.Receive()); });
        trial.Gives("GetExport of " + exported.id + " on another thread", result, TVX_OK);
        trial.Same("the export " + exported.id + ", asked for on another thread,", GetIdentity(trial, elsewhere).Get(),
                   GetIdentity(trial, exported).Get());
    }
}

void GainOneReferenceEachTime(Trial& trial)
{
    for (const auto& [id, object] : GetExports(trial))
    {
        const auto count = object->GetRefCount();
        auto second = trial.GetExport(id);
        trial.Equal("the count of " + id + " after it was asked for again", object->GetRefCount(), count + 1);
        const auto third = trial.GetExport(id);
        trial.Equal("the count of " + id + " after it was asked for a third time", object->GetRefCount(), count + 2);
        second = nullptr;
        trial.Equal("the count of " + id + " after one release", object->GetRefCount(), count + 1);
    }
}

void StayWithTheModule(Trial& trial)
{
    for (const auto& [id, object] : GetExports(trial))
    {
        if (object->IsUnique())
            trial.Warn("the export " + id +
                       " is held by nobody but the one who asked for it, and dies with the last release: later askers "
                       "cannot get the same object");
    }
}

void AreGivenAgainAfterRelease(Trial& trial)
{
    const auto ids = GetExportIds(trial);
    for (int round = 0; round < 50; ++round)
    {
        for (const auto& id : ids)
            trial.Expect(trial.GetExport(id)->GetRefCount() != 0, "a count of " + id + " that counts the asker", "0");
    }
}

// One by one: two exports may be one object.
void AreNotHinderedByAskersWhoKeep(Trial& trial)
{
    for (const auto& [id, object] : GetExports(trial))
    {
        const auto count = object->GetRefCount();
        std::vector<Ref<IObjectBase>> kept;
        for (int round = 0; round < 200; ++round)
            kept.push_back(trial.GetExport(id));
        trial.Equal("the count of " + id + " after 200 more askers", object->GetRefCount(), count + 200);
        kept.clear();
        trial.Equal("the count of " + id + " after all of them released it", object->GetRefCount(), count);
    }
}

void AreDifferentObjects(Trial& trial)
{
    std::map<const IObjectBase*, std::string> owners;
    for (const auto& exported : GetExports(trial))
    {
        const auto owner = owners.emplace(GetIdentity(trial, exported).Get(), exported.id).first;
        if (owner->second != exported.id)
            trial.Warn("the exports " + owner->second + " and " + exported.id +
                       " are one object: what is set on the one " + "is set on the other");
    }
}

// An out that holds an object of the asker's: it is written over, neither read nor released.
void OverwriteWhatStoodInOut(Trial& trial)
{
    const auto getExport = trial.Load().GetEntryPoint();
    for (const auto& [id, object] : GetExports(trial))
    {
        const auto before = MakeRef<BareObject>();
        IObjectBase* out = before.Get();
        trial.Gives("GetExport of " + id, getExport(id.c_str(), &out), TVX_OK);
        trial.Expect(out != before.Get(), "the out of GetExport of " + id + " to be written",
                     "what stood there before");
        const auto given = Ref<IObjectBase>::Adopt(out);
        trial.Same("the out of GetExport of " + id, given.Get(), object.Get());
        trial.Equal("the count of what stood in the out of GetExport before", before->GetRefCount(), 1u);
    }
}

// The same bytes at another place, with more behind the NUL.
void AreFoundByTheTextOfTheId(Trial& trial)
{
    const auto getExport = trial.Load().GetEntryPoint();
    for (const auto& [id, object] : GetExports(trial))
    {
        const auto text = id + std::string("\0behind", 7);
        Ref<IObjectBase> given;
        trial.Gives("GetExport of a copy of " + id, getExport(text.c_str(), given.Receive()), TVX_OK);
        trial.Same("what GetExport gives for a copy of " + id, given.Get(), object.Get());
    }
}

void AreGivenInSilence(Trial& trial)
{
    const auto getExport = trial.Load().GetEntryPoint();
    for (const auto& id : GetExportIds(trial))
    {
        Ref<IObjectBase> object;
        trial.Writes("GetExport of " + id, "", [&] { getExport(id.c_str(), object.Receive()); });
    }
}

constexpr Check Checks[] = {
    {"export-every-listed-id-is-given", "Every export of the configuration document is asked for.",
     "GetExport gives 0 and an object for each identifier that the module's document lists.", AreAllGiven},
    {"export-is-the-same-object-every-time", "Each export is asked for eleven times.",
     "An export is one object for the whole process: every asker gets the same one, as its IObjectBase face tells.",
     AreTheSameEveryTime},
    {"export-is-the-same-object-on-every-thread", "Each export is asked for on two threads.",
     "An export is one object for the whole process, whichever thread asks.", AreTheSameOnAnotherThread},
    {"export-gains-one-reference-each-time", "The count of each export is read while it is asked for and released.",
     "What GetExport gives carries exactly one reference for the asker.", GainOneReferenceEachTime},
    {"export-stays-with-the-module", "The count of each export is read when it has one asker.",
     "The module itself holds each export until it is unloaded, so that it is still there for the next asker.",
     StayWithTheModule},
    {"export-is-given-again-after-its-release", "Each export is asked for and released many times.",
     "An export outlives its askers: releasing it leaves it there for the next one.", AreGivenAgainAfterRelease},
    {"export-does-not-mind-askers-who-keep-it", "Each export is asked for 200 times before anything is released.",
     "Each asker has a reference of its own, and the count is what it was when all of them are released.",
     AreNotHinderedByAskersWhoKeep},
    {"export-objects-differ", "The objects of all exports are compared.",
     "Two exports are two objects; where they are one, it should be on purpose.", AreDifferentObjects},
    {"export-overwrites-what-stood-in-out", "Exports are asked for with an out that holds a pointer already.",
     "GetExport writes the out whatever stood there, and neither calls nor releases that.", OverwriteWhatStoodInOut},
    {"export-is-found-by-the-text-of-its-id", "Exports are asked for by copies of their identifiers.",
     "An identifier is compared as text up to its NUL, not by its address nor by what follows.",
     AreFoundByTheTextOfTheId},
    {"export-is-given-in-silence", "Standard output is watched while the exports are asked for.",
     "GetExport writes nothing to standard output.", AreGivenInSilence},
};

}  // namespace

extern const Family ExportFamily = {"exports", nullptr, Needs::Module, Checks};

}  // namespace tvx::check
