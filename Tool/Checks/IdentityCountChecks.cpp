// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/KnownIds.h"
#include "Tool/Checks/ReachedExports.h"
#include "Tool/Checks/SlotCaller.h"

namespace tvx::check
{

namespace
{

// The first query of all, before a forgotten reference can take the object away.
void ExpectOneForTheFirstAnswer(Trial& trial)
{
    for (const auto& [id, object] : GetExports(trial))
    {
        const auto count = object->GetRefCount();
        const auto answer = Ask(*object, "com.talvere.general.tvx.IObjectBase/1.0");
        trial.Equal("the count after the query of the export " + id + " for IObjectBase", object->GetRefCount(),
                    count + (answer.face ? 1 : 0));
    }
}

void CountOneForEachAnswer(Trial& trial)
{
    ExpectOneForTheFirstAnswer(trial);
    ForEachFace(trial,
                [&](const std::string& name, IObjectBase& face)
                {
                    const auto count = face.GetRefCount();
                    for (const char* const id : KnownIds)
                    {
                        const auto answer = Ask(face, id);
                        trial.Equal("the count after the query of " + name + " for " + id, face.GetRefCount(),
                                    count + (answer.face ? 1 : 0));
                    }
                    trial.Equal("the count of " + name + " when all answers are released", face.GetRefCount(), count);
                });
}

void CountAlikeThroughEachFace(Trial& trial)
{
    for (const auto& reached : ReachExports(trial))
    {
        const auto count = reached.GetObject().GetRefCount();
        for (const auto& face : reached.faces)
            trial.Equal("the count read through " + NameFace(reached, face), face.face->GetRefCount(), count);
    }
}

void TellTheNewCount(Trial& trial)
{
    ForEachFace(trial,
                [&](const std::string& name, IObjectBase& face)
                {
                    const auto count = face.GetRefCount();
                    trial.Equal("what AddRef of " + name + " gives", CallIObjectBaseAddRef(&face), count + 1);
                    trial.Equal("the count after AddRef of " + name, face.GetRefCount(), count + 1);
                    trial.Equal("what Release of " + name + " gives", CallIObjectBaseRelease(&face), count);
                    trial.Equal("the count after Release of " + name, face.GetRefCount(), count);
                });
}

void AreNotUniqueWhenHeldTwice(Trial& trial)
{
    for (const auto& [id, object] : GetExports(trial))
    {
        const auto second = object;
        trial.Equal("IsUnique of " + id + ", held twice,", object->IsUnique(), false);
        trial.Equal("IsUnique of " + id + ", held twice, as its slot gives it,", CallIObjectBaseIsUnique(object.Get()),
                    false);
    }
}

constexpr Check Checks[] = {
    {"identity-answer-adds-one-reference", "Counts are read before and after each query.",
     "A query that succeeds adds exactly one reference, for the asker; one that fails adds none.",
     CountOneForEachAnswer},
    {"identity-faces-count-alike", "The count of each export is read through each of its faces.",
     "The references are the object's, not a face's: each face tells the same count.", CountAlikeThroughEachFace},
    {"identity-addref-and-release-tell-the-count", "References are added and dropped through each face.",
     "AddRef and Release give the new count, one more and one less than before.", TellTheNewCount},
    {"identity-held-twice-is-not-unique", "IsUnique of each export is asked while it is held twice.",
     "IsUnique is true for a count of exactly 1 only.", AreNotUniqueWhenHeldTwice},
};

}  // namespace

extern const Family IdentityCountFamily = {"identity", nullptr, Needs::Module, Checks};

}  // namespace tvx::check
