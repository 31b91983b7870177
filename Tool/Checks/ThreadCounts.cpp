// SPDX-License-Identifier: MIT
#include "Tool/Checks/ThreadCounts.h"

#include "Tool/Checks/Threads.h"

#include <algorithm>

namespace tvx::check
{

namespace
{

using References = std::vector<Ref<IObjectBase>>;

constexpr int ReferenceCount = 5000;  // of each thread

std::vector<References> TakeTogether(const std::function<Ref<IObjectBase>()>& take)
{
    std::vector<References> held(ThreadCount, References(ReferenceCount));
    RunTogether(
        [&](int number)
        {
            for (auto& reference : held[static_cast<std::size_t>(number)])
                reference = take();
        });
    return held;
}

// Leaves them to the module: where some were not counted, releasing all would destroy what others still hold.
void Abandon(std::vector<References>& held)
{
    for (auto& references : held)
    {
        for (auto& reference : references)
            reference.Detach();
    }
}

bool AreAll(const std::vector<References>& held, const IObjectBase* expected)
{
    return std::all_of(held.begin(), held.end(),
                       [&](const References& references)
                       {
                           return std::all_of(references.begin(), references.end(),
                                              [&](const auto& reference) { return reference.Get() == expected; });
                       });
}

void ExpectExactCountOnce(Trial& trial, const std::string& what, IObjectBase& object, const IObjectBase* expectedFace,
                          const std::function<Ref<IObjectBase>()>& take)
{
    const auto before = object.GetRefCount();
    auto held = TakeTogether(take);
    const bool areRight = AreAll(held, expectedFace);
    const auto between = object.GetRefCount();
    const auto expected = before + ThreadCount * ReferenceCount;
    if (!areRight || between != expected)
        Abandon(held);
    trial.Expect(areRight, "four threads to get the same face of " + what, "another one or none");
    trial.Equal("the count of " + what + " that four threads took references on", between, expected);
    RunTogether([&](int number) { held[static_cast<std::size_t>(number)].clear(); });
    trial.Equal("the count of " + what + " when four threads have dropped their references", object.GetRefCount(),
                before);
}

}  // namespace

void ExpectExactCount(Trial& trial, const std::string& what, IObjectBase& object, const IObjectBase* expectedFace,
                      std::chrono::milliseconds duration, const std::function<Ref<IObjectBase>()>& take)
{
    const auto end = std::chrono::steady_clock::now() + duration;
    do
        ExpectExactCountOnce(trial, what, object, expectedFace, take);
    while (std::chrono::steady_clock::now() < end);
}

}  // namespace tvx::check
