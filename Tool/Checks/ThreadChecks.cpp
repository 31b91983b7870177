// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Queries.h"
#include "Tool/Checks/ThreadCounts.h"
#include "Tool/Checks/Threads.h"

#include <atomic>

namespace tvx::check
{

namespace
{

constexpr std::chrono::milliseconds Duration(30);  // of a check, for all exports together

void KeepCountsExact(Trial& trial)
{
    const auto exports = GetExports(trial);
    for (const auto& exported : exports)
        ExpectExactCount(trial, exported.id, *exported.object, exported.object.Get(), Duration / exports.size(),
                         [&] { return exported.object; });
}

void KeepCountsExactInQueries(Trial& trial)
{
    const auto exports = GetExports(trial);
    for (const auto& exported : exports)
    {
        const auto identity = trial.QueryAs<IObjectBase>(exported.object, "the export " + exported.id);
        ExpectExactCount(trial, exported.id, *exported.object, identity.Get(), Duration / exports.size(),
                         [&] { return Query<IObjectBase>(exported.object); });
    }
}

void AreGivenToManyThreads(Trial& trial)
{
    const auto exports = GetExports(trial);
    const auto getExport = trial.Load().GetEntryPoint();
    for (const auto& exported : exports)
    {
        const auto ask = [&]
        {
            Ref<IObjectBase> given;
            getExport(exported.id.c_str(), given.Receive());
            return given;
        };
        ExpectExactCount(trial, exported.id, *exported.object, exported.object.Get(), Duration / exports.size(), ask);
    }
}

void UnknownIdsAreRefusedToManyThreads(Trial& trial)
{
    const auto getExport = trial.Load().GetEntryPoint();
    std::atomic<int> wrong = 0;
    RunTogether(
        [&](int)
        {
            for (int round = 0; round < 5000; ++round)
            {
                Ref<IObjectBase> refused;
                wrong += getExport("unknown", refused.Receive()) == TVX_E_FAIL && !refused ? 0 : 1;
            }
        });
    trial.Equal("the number of wrong answers of GetExport of an unknown id to many threads", wrong.load(), 0);
}

constexpr Check Checks[] = {
    {"thread-counts-stay-exact", "Four threads add references on every export, hold them together, and drop them.",
     "AddRef and Release may be called on any thread at any time: no reference is lost, none stays.", KeepCountsExact},
    {"thread-counts-stay-exact-in-queries", "Four threads query every export at once, and release what they get.",
     "A query may come from any thread; it gives the same face to all, and one reference to each.",
     KeepCountsExactInQueries},
    {"thread-exports-are-given-to-many", "Four threads ask for every export at once.",
     "Once the module is loaded, GetExport may be called on any thread; each gets the object and a reference.",
     AreGivenToManyThreads},
    {"thread-unknown-exports-are-refused-to-many", "Four threads ask for an unknown export at once.",
     "Once the module is loaded, GetExport may be called on any thread; an unknown identifier gives -1 and null to "
     "each.",
     UnknownIdsAreRefusedToManyThreads},
};

}  // namespace

extern const Family ThreadFamily = {"threads", nullptr, Needs::Module, Checks};

}  // namespace tvx::check
