// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/Fuzzer.h"

#include "Tool/Checks/Run.h"

#include <algorithm>
#include <deque>
#include <future>
#include <mutex>
#include <optional>

namespace tvx::fuzz
{

namespace
{

using Clock = std::chrono::steady_clock;

// How long one process walks: a fresh process is a fresh module.
constexpr std::chrono::seconds Slice(5);

// A sort of walks, and the seed of the next one.
struct Lane
{
    const Walk* walk;
    std::uint64_t nextSeed;
};

// One run of the fuzzer: each worker takes the sort that waited longest and brings it back after a while, so that each is
// gone by one worker at a time.
class Fuzzing
{
public:
    Fuzzing(const Options& options, const std::vector<const Walk*>& walks, const TellFinding& tell)
        : options_(options),
          tell_(tell),
          deadline_(Clock::now() + options.duration)
    {
        for (const auto* const walk : walks)
            waiting_.push_back({walk, check::MixSeed(options.seed, walk->name)});
    }

    std::uint64_t Run()
    {
        std::vector<std::future<void>> workers;
        const auto count = std::min<std::size_t>(options_.jobs, waiting_.size());
        for (std::size_t worker = 0; worker < count; ++worker)
            workers.push_back(std::async(std::launch::async, [this] { Work(); }));
        for (auto& worker : workers)
            worker.get();
        return walks_;
    }

private:
    // A worker that has trouble has the others end, too.
    void Work()
    try
    {
        while (auto lane = TakeLane())
            WalkOn(*lane);
    }
    catch (...)
    {
        const std::lock_guard guard(lock_);
        isStopped_ = true;
        throw;
    }

    // None when the time is over, every sort has found something, or there was trouble.
    std::optional<Lane> TakeLane()
    {
        const std::lock_guard guard(lock_);
        if (isStopped_ || waiting_.empty() || Clock::now() >= deadline_)
            return std::nullopt;
        const auto lane = waiting_.front();
        waiting_.pop_front();
        return lane;
    }

    void WalkOn(Lane lane)
    {
        const auto left = std::chrono::ceil<std::chrono::seconds>(deadline_ - Clock::now());
        const auto run =
            RunWalks(options_.file, *lane.walk, lane.nextSeed, std::clamp(left, std::chrono::seconds(1), Slice));
        if (run.sign == WalkRun::Sign::None)
        {
            lane.nextSeed += run.walks;
            BringBack(lane, run.walks);
            return;
        }
        const auto finding = Explain(options_.file, *lane.walk, run, options_.scratch);
        const std::lock_guard guard(lock_);
        walks_ += run.walks;
        tell_(finding);
    }

    void BringBack(const Lane& lane, std::uint64_t walks)
    {
        const std::lock_guard guard(lock_);
        waiting_.push_back(lane);
        walks_ += walks;
    }

    const Options& options_;
    const TellFinding& tell_;
    Clock::time_point deadline_;
    std::mutex lock_;
    std::deque<Lane> waiting_;
    std::uint64_t walks_ = 0;
    bool isStopped_ = false;
};

}  // namespace

std::uint64_t Fuzz(const Options& options, const std::vector<const Walk*>& walks, const TellFinding& tell)
{
    return Fuzzing(options, walks, tell).Run();
}

}  // namespace tvx::fuzz
