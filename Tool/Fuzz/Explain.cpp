// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/Explain.h"

#include "Host/TextFile.h"
#include "Tool/Fuzz/Shrink.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace tvx::fuzz
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds TimeToShrink(30);

// The last walks of a process that began so many.
Replay MakeReplay(const Walk& walk, const WalkRun& seen, std::uint64_t walks)
{
    Replay replay{&walk, {}};
    for (auto seed = seen.lastSeed + 1 - walks; seed <= seen.lastSeed; ++seed)
    {
        if (!replay.steps.empty())
            replay.steps.push_back(NextWalk);
        check::Random random(seed);
        const auto steps = MakeSteps(walk, random, StepsOfAWalk);
        replay.steps.insert(replay.steps.end(), steps.begin(), steps.end());
    }
    return replay;
}

// A walk takes much less than this, so that waiting for one that hangs leaves time for others.
std::chrono::milliseconds GetPatience(const Replay& replay)
{
    constexpr std::chrono::milliseconds atLeast(2000);
    constexpr std::chrono::milliseconds atMost(8000);
    return std::min(atMost, atLeast + std::chrono::milliseconds(replay.steps.size()));
}

// Follows walks again, one after the other, until the time is over: from then on none shows anything.
class Reproducer
{
public:
    Reproducer(const std::filesystem::path& file, const Walk& walk, const WalkRun& seen,
               const std::filesystem::path& scratch)
        : file_(file),
          replay_(scratch / (std::string(walk.name) + ".replay")),
          seen_(seen),
          last_(seen)
    {
    }

    bool Shows(const Replay& replay)
    {
        if (IsOver())
            return false;
        if (const auto written = host::WriteTextFile(replay_, Describe(replay)); !written)
            throw std::runtime_error(written.GetError().message);
        auto run = RunReplay(file_, replay_, GetPatience(replay));
        const bool shows = run.ShowsTheSameAs(seen_);
        if (shows)
            last_ = std::move(run);
        return shows;
    }

    bool IsOver() const { return Clock::now() >= deadline_; }

    // What the last walk said that showed it.
    const std::string& GetMessage() const { return last_.message; }

private:
    const std::filesystem::path& file_;
    std::filesystem::path replay_;
    const WalkRun& seen_;
    WalkRun last_;
    Clock::time_point deadline_ = Clock::now() + TimeToShrink;
};

}  // namespace

Finding Explain(const std::filesystem::path& file, const Walk& walk, const WalkRun& seen,
                const std::filesystem::path& scratch)
{
    Reproducer reproducer(file, walk, seen, scratch);
    const bool crashed = seen.sign == WalkRun::Sign::Crash;
    for (std::uint64_t walks = 1; !reproducer.IsOver(); walks *= 2)
    {
        walks = std::min(walks, seen.walks);
        auto replay = MakeReplay(walk, seen, walks);
        if (reproducer.Shows(replay))
        {
            replay = Shrink(std::move(replay), [&](const Replay& tried) { return reproducer.Shows(tried); });
            return {std::move(replay), seen.lastSeed, crashed, true, reproducer.GetMessage()};
        }
        if (walks == seen.walks)
            break;
    }
    return {MakeReplay(walk, seen, 1), seen.lastSeed, crashed, false, seen.message};
}

}  // namespace tvx::fuzz
