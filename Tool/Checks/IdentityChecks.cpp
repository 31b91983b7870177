// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/KnownIds.h"
#include "Tool/Checks/ReachedExports.h"
#include "Tool/Checks/SlotCaller.h"
#include "Tool/Checks/Threads.h"

namespace tvx::check
{

namespace
{

// The faces of the same object say the same, here and there.
void ExpectSameFaces(Trial& trial, const std::string& name, const std::vector<KnownFace>& came,
                     const std::vector<KnownFace>& expected)
{
    trial.Equal("the number of known interfaces that " + name + " answers", came.size(), expected.size());
    for (std::size_t i = 0; i < came.size(); ++i)
    {
        trial.Equal("an identifier that " + name + " answers", came[i].id, expected[i].id);
        trial.Same("the answer of " + name + " to " + came[i].id, came[i].face.Get(), expected[i].face.Get());
    }
}

void AnswerIObjectBase(Trial& trial)
{
    for (const auto& [id, object] : GetExports(trial))
    {
        const auto answer = Ask(*object, "com.talvere.general.tvx.IObjectBase/1.0");
        trial.Gives("the query of the export " + id + " for IObjectBase", answer.result, TVX_OK);
        trial.Expect(static_cast<bool>(answer.face), "the export " + id + " to give its IObjectBase face", "nothing");
    }
}

void AnswerOrRefuse(Trial& trial)
{
    ForEachFace(trial,
                [&](const std::string& name, IObjectBase& face)
                {
                    for (const char* const id : KnownIds)
                    {
                        const auto answer = Ask(face, id);
                        const bool isAnswered = answer.result == TVX_OK && answer.face;
                        const bool isRefused = answer.result == TVX_E_NOINTERFACE && !answer.isOutTouched;
                        trial.Expect(isAnswered || isRefused,
                                     name + " to answer " + id + " with 0 and a face, or to give " +
                                         "-3 and leave the out as it was",
                                     ShowResult(answer.result) + (answer.face ? " and a face" : " and no face"));
                    }
                });
}

void KeepOneIdentity(Trial& trial)
{
    for (const auto& reached : ReachExports(trial))
    {
        const auto identity = trial.QueryAs<IObjectBase>(reached.faces.front().face, reached.name);
        for (const auto& face : reached.faces)
        {
            const auto again = trial.QueryAs<IObjectBase>(face.face, NameFace(reached, face));
            trial.Same("the IObjectBase face that " + NameFace(reached, face) + " gives", again.Get(), identity.Get());
        }
    }
}

void GiveTheSameFaceAgain(Trial& trial)
{
    for (const auto& reached : ReachExports(trial))
        ExpectSameFaces(trial, reached.name, GetFaces(reached.GetObject()), reached.GetAnswers());
}

void AnswerAlikeThroughEachFace(Trial& trial)
{
    for (const auto& reached : ReachExports(trial))
    {
        for (const auto& face : reached.faces)
            ExpectSameFaces(trial, NameFace(reached, face), GetFaces(*face.face), reached.GetAnswers());
    }
}

void AnswerAlikeOnAnotherThread(Trial& trial)
{
    for (const auto& reached : ReachExports(trial))
    {
        std::vector<KnownFace> elsewhere;
        RunElsewhere([&] { elsewhere = GetFaces(reached.GetObject()); });
        ExpectSameFaces(trial, reached.name + " on another thread", elsewhere, reached.GetAnswers());
    }
}

void AnswerAlikeInBothQueries(Trial& trial)
{
    ForEachFace(trial,
                [&](const std::string& name, IObjectBase& face)
                {
                    for (const char* const id : KnownIds)
                    {
                        const auto expected = Ask(face, id);
                        void* out = nullptr;
                        const auto result = CallIObjectBaseDoQueryInterface(&face, id, &out);
                        const auto query = "DoQueryInterface of " + name + " for " + id;
                        trial.Gives(query, result, expected.result);
                        trial.Same("the out of " + query, out, expected.face.Get());
                        Ref<IObjectBase>::Adopt(static_cast<IObjectBase*>(out));
                    }
                });
}

// A copy of the identifier, with more behind its NUL.
void KnowIdsByTheirText(Trial& trial)
{
    for (const auto& reached : ReachExports(trial))
    {
        for (std::size_t i = 1; i < reached.faces.size(); ++i)
        {
            const auto text = reached.faces[i].id + std::string("\0behind", 7);
            const auto answer = Ask(reached.GetObject(), text.c_str());
            trial.Same("the answer of " + reached.name + " to a copy of " + reached.faces[i].id, answer.face.Get(),
                       reached.faces[i].face.Get());
        }
    }
}

void QueryInSilence(Trial& trial)
{
    const auto exports = ReachExports(trial);
    trial.Writes("a query", "",
                 [&]
                 {
                     for (const auto& reached : exports)
                     {
                         GetFaces(reached.GetObject());
                         Ask(reached.GetObject(), "unknown");
                         reached.GetObject().QueryInterface("unknown", nullptr);
                     }
                 });
}

constexpr Check Checks[] = {
    {"identity-every-export-answers-iobjectbase", "Each export is asked for IObjectBase.",
     "Every object answers the identifier of IObjectBase, the root of all interfaces.", AnswerIObjectBase},
    {"identity-query-answers-or-refuses", "Each export is asked for every known identifier through each of its faces.",
     "A query gives 0 and a face, or -3 and leaves the out alone; there is nothing in between.", AnswerOrRefuse},
    {"identity-is-one-through-all-faces", "Each face of each export is asked for IObjectBase.",
     "The IObjectBase face is the object's identity: it is the same pointer whichever face is asked.", KeepOneIdentity},
    {"identity-face-is-the-same-again", "Each export is asked for each known identifier twice.",
     "As long as an object lives it gives the same face for the same identifier.", GiveTheSameFaceAgain},
    {"identity-faces-answer-alike", "Each face of each export is asked for every known identifier.",
     "From every face of an object all others can be reached: each answers the same identifiers by the same pointers.",
     AnswerAlikeThroughEachFace},
    {"identity-threads-see-the-same-faces", "Each export is asked for every known identifier on another thread.",
     "What an object answers does not depend on the thread that asks.", AnswerAlikeOnAnotherThread},
    {"identity-both-queries-agree", "Each face is asked by QueryInterface and by DoQueryInterface.",
     "QueryInterface only forwards to DoQueryInterface: results and faces are the same.", AnswerAlikeInBothQueries},
    {"identity-ids-are-known-by-their-text", "Exports are asked by copies of identifiers.",
     "An identifier is compared as text up to its NUL, not by its address nor by what follows.", KnowIdsByTheirText},
    {"identity-queries-are-silent", "Standard output is watched during queries that succeed and that fail.",
     "Queries are a normal way to find out what an object is: nothing is written, also when they fail.",
     QueryInSilence},
};

}  // namespace

extern const Family IdentityFamily = {"identity", nullptr, Needs::Module, Checks};

}  // namespace tvx::check
