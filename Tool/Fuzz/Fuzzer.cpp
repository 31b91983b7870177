// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/Fuzzer.h"

#include "Host/TextFile.h"
#include "Platform/Environment.h"
#include "Tool/ChildCode.h"
#include "Tool/Fuzz/Shrink.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <random>
#include <sstream>
#include <thread>

namespace tvx::fuzz
{

namespace
{

using Clock = std::chrono::steady_clock;

// How long one process walks: a fresh process is a fresh module.
constexpr std::chrono::seconds Slice(5);

// What a walk may take beyond its time; one that takes longer hangs.
constexpr std::chrono::seconds Patience(5);

// The seeds of two processes never meet.
constexpr std::uint64_t SeedsOfASlice = 1'000'000;

// A replay in a file that is gone afterwards.
class ReplayFile
{
public:
    explicit ReplayFile(const Replay& replay)
    {
        std::random_device random;
        path_ = std::filesystem::temp_directory_path() / ("tvx-fuzz-" + std::to_string(random()) + ".replay");
        static_cast<void>(host::WriteTextFile(path_, Describe(replay)));
    }
    ~ReplayFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    ReplayFile(const ReplayFile&) = delete;
    ReplayFile& operator=(const ReplayFile&) = delete;

    const std::filesystem::path& GetPath() const { return path_; }

private:
    std::filesystem::path path_;
};

// Whether the module did something wrong: a process that could not be started, or its own complaint, says nothing of it.
bool ShowsSomething(const Platform::ChildRun& run)
{
    if (run.end == Platform::ChildRun::End::NotStarted)
        return false;
    const auto code = tool::FindOwnCode(run);
    return !code || *code == tool::AnswerIsNo;
}

// What a child says of itself: how many walks it began, the seed of the last of them, and then perhaps what went wrong.
struct Told
{
    std::uint64_t walks = 0;
    std::uint64_t seed = 0;
    std::string message;
};

Told Listen(const std::string& output)
{
    Told told;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);)
    {
        if (line.starts_with("seed "))
        {
            ++told.walks;
            told.seed = std::strtoull(line.c_str() + 5, nullptr, 10);
        }
        else
            told.message = line;
    }
    return told;
}

bool IsCrash(const Platform::ChildRun& run)
{
    return !tool::FindOwnCode(run);
}

std::string GetMessage(const Platform::ChildRun& run)
{
    return tool::FindOwnCode(run) ? Listen(run.output).message : "the process of the walk " + tool::DescribeEnd(run);
}

// The processes of one run of the fuzzer: each thread takes the next sort of walks and the next seeds.
class Fuzzing
{
public:
    Fuzzing(const Options& options, std::vector<const Walk*> walks)
        : options_(options),
          walks_(std::move(walks)),
          deadline_(Clock::now() + options.duration)
    {
    }

    Summary Run()
    {
        {
            std::vector<std::jthread> workers;
            for (unsigned job = 0; job < std::max(1u, options_.jobs); ++job)
                workers.emplace_back([this] { Work(); });
        }
        return std::move(summary_);
    }

private:
    void Work()
    {
        while (const Walk* const walk = TakeWalk())
        {
            const auto left = std::chrono::ceil<std::chrono::seconds>(deadline_ - Clock::now());
            Judge(*walk, RunSlice(*walk, std::clamp(left, std::chrono::seconds(1), Slice)));
        }
    }

    // Null when the time is over or every sort has found something.
    const Walk* TakeWalk()
    {
        const std::lock_guard guard(lock_);
        if (walks_.empty() || Clock::now() >= deadline_)
            return nullptr;
        return walks_[next_++ % walks_.size()];
    }

    Platform::ChildRun RunSlice(const Walk& walk, std::chrono::seconds time)
    {
        const auto seed = options_.seed + SeedsOfASlice * slices_++;
        return Platform::RunChild(Platform::GetProgramFile(),
                                  {"fuzz", "--child", walk.name, "--seed", std::to_string(seed), "--seconds",
                                   std::to_string(time.count()), "--", options_.file.string()},
                                  time + Patience);
    }

    void Judge(const Walk& walk, const Platform::ChildRun& run)
    {
        const auto told = Listen(run.output);
        const std::lock_guard guard(lock_);
        summary_.walks += told.walks;
        if (!ShowsSomething(run))
            return;
        const auto known = std::find(walks_.begin(), walks_.end(), &walk);
        if (known == walks_.end())
            return;  // the other thread was first
        walks_.erase(known);
        summary_.findings.push_back(Explain(walk, told, run));
    }

    Finding Explain(const Walk& walk, const Told& told, const Platform::ChildRun& run) const
    {
        check::Random random(told.seed);
        Replay replay{&walk, MakeSteps(walk, random, StepsOfAWalk)};
        const bool crashed = IsCrash(run);
        Platform::ChildRun last;
        const auto stillFails = [&](const Replay& tried)
        {
            const ReplayFile file(tried);
            auto reproduced = Reproduce(options_.file, file.GetPath());
            const bool fails = ShowsSomething(reproduced) && IsCrash(reproduced) == crashed;
            if (fails)
                last = std::move(reproduced);
            return fails;
        };
        if (!stillFails(replay))
            return {std::move(replay), told.seed, crashed,
                    GetMessage(run) +
                        " (the walk alone does not show it: it takes those before it, from the same seed)"};
        auto shrunk = Shrink(std::move(replay), stillFails);
        return {std::move(shrunk), told.seed, crashed, GetMessage(last)};
    }

    const Options& options_;
    std::vector<const Walk*> walks_;
    Clock::time_point deadline_;
    std::atomic<std::uint64_t> slices_ = 0;
    std::mutex lock_;
    std::size_t next_ = 0;
    Summary summary_;
};

}  // namespace

Summary Fuzz(const Options& options, const std::vector<const Walk*>& walks)
{
    return Fuzzing(options, walks).Run();
}

Platform::ChildRun Reproduce(const std::filesystem::path& file, const std::filesystem::path& replay)
{
    return Platform::RunChild(
        Platform::GetProgramFile(),
        {"fuzz", "--child", "replay", "--in-process", "--reproduce", replay.string(), "--", file.string()}, Patience);
}

}  // namespace tvx::fuzz
