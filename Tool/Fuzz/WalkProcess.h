// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/ChildProcess.h"
#include "Tool/Fuzz/Replay.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>

namespace tvx::fuzz
{

// How many steps a random walk has.
constexpr std::size_t StepsOfAWalk = 200;

// What came of a process that walked.
struct WalkRun
{
    // What it showed of the module.
    enum class Sign
    {
        None,
        Difference,  // it came to differ from the model
        Crash,       // it took its process with it, or did not end
    };

    Sign sign;                    // what
    Platform::ChildRun::End end;  // how the process came to its end: a crash is not a hang
    std::string message;          // what went wrong, one line; else empty
    std::string errors;           // what the process wrote to standard error
    std::uint64_t walks;          // how many random walks it began
    std::uint64_t lastSeed;       // of the last of them

    bool ShowsTheSameAs(const WalkRun& other) const { return sign == other.sign && end == other.end; }
};

// Random walks of one sort until the time is over or something shows, with the seed and those after it: this program with the
// arguments "fuzz --child WALK --seed N --seconds N -- FILE".
// Both throw std::runtime_error for what is no fault of the module: there is no process, or it cannot do its work.
WalkRun RunWalks(const std::filesystem::path& file, const Walk& walk, std::uint64_t seed, std::chrono::seconds time);

// The walk of a file: this program with "fuzz --child replay --in-process --reproduce REPLAY -- FILE".
WalkRun RunReplay(const std::filesystem::path& file, const std::filesystem::path& replay,
                  std::chrono::milliseconds limit);

// What a child says before each random walk, since it may not come back.
std::string AnnounceWalk(std::uint64_t seed);

}  // namespace tvx::fuzz
