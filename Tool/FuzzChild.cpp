// SPDX-License-Identifier: MIT
#include "Tool/FuzzChild.h"

#include "Tool/Checks/Run.h"
#include "Tool/ChildCode.h"
#include "Tool/Fuzz/WalkProcess.h"

#include <cstdlib>

namespace tvx::tool
{

namespace
{

// The process of a walk. It ends before anything of the module is released or unloaded: that may take the process with it.
class WalkingProcess
{
public:
    WalkingProcess(const Console& console, const std::string& file, const fuzz::Walk& walk, FuzzEnd end)
        : console_(console),
          walk_(walk),
          end_(end),
          trial_(file, 0, console.GetOutput(), [this](const check::Outcome& outcome) { EndAt(outcome); })
    {
    }

    void Say(std::string_view text) const { console_.Print(text); }

    // Comes back when nothing showed. What the module writes while it is loaded has nothing to do with the walk.
    void Follow(std::span<const fuzz::Step> steps)
    {
        const auto deed = [&]
        {
            static_cast<void>(trial_.TakeOutput([&] { trial_.Load(); }));
            fuzz::Follow(walk_, steps, trial_);
        };
        if (const auto outcome = check::TryOut(deed); outcome.verdict != check::Verdict::Passed)
            EndAt(outcome);
    }

    [[noreturn]] void End(ExitCode code) const { std::_Exit(end_ == FuzzEnd::ChildCode ? MakeChildCode(code) : code); }

private:
    // What is skipped could not be tried: that is no finding.
    [[noreturn]] void EndAt(const check::Outcome& outcome) const
    {
        if (outcome.verdict == check::Verdict::Skipped)
        {
            Console::Complain(outcome.message);
            End(CannotRead);
        }
        console_.Print(host::MakeOneLine(outcome.message) + "\n");
        End(AnswerIsNo);
    }

    const Console& console_;
    const fuzz::Walk& walk_;
    FuzzEnd end_;
    check::Trial trial_;
};

}  // namespace

void WalkAsChild(const Console& console, const std::string& file, const fuzz::Walk& walk, std::uint64_t seed,
                 std::chrono::seconds time)
{
    WalkingProcess process(console, file, walk, FuzzEnd::ChildCode);
    const auto end = std::chrono::steady_clock::now() + time;
    for (; std::chrono::steady_clock::now() < end; ++seed)
    {
        process.Say(fuzz::AnnounceWalk(seed));
        check::Random random(seed);
        process.Follow(fuzz::MakeSteps(walk, random, fuzz::StepsOfAWalk));
    }
    process.End(Ok);
}

void FollowReplay(const Console& console, const std::string& file, const fuzz::Replay& replay, FuzzEnd end)
{
    WalkingProcess process(console, file, *replay.walk, end);
    process.Follow(replay.steps);
    process.End(Ok);
}

}  // namespace tvx::tool
