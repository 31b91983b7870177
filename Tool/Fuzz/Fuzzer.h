// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/ChildProcess.h"
#include "Tool/Fuzz/Replay.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tvx::fuzz
{

struct Options
{
    std::filesystem::path file;
    std::chrono::seconds duration{10};
    std::uint64_t seed = 1;
    unsigned jobs = 1;  // how many processes at once
};

// What a walk came to: the shortest one that still shows it.
struct Finding
{
    Replay replay;
    std::uint64_t seed;   // of the walk as it was found
    bool crashed;         // it took its process with it, or did not end
    std::string message;  // one line
};

struct Summary
{
    std::uint64_t walks = 0;
    std::vector<Finding> findings;
};

// How many steps a walk has.
constexpr std::size_t StepsOfAWalk = 200;

// Random walks over everything that the module offers, in processes of their own, until the time is over: this program with
// the arguments "fuzz --child WALK --seed N --seconds N -- FILE". A sort of walks that found something is not gone again.
Summary Fuzz(const Options& options, const std::vector<const Walk*>& walks);

// Follows one walk in a process of its own: this program with
// "fuzz --child replay --in-process --reproduce REPLAY -- FILE".
Platform::ChildRun Reproduce(const std::filesystem::path& file, const std::filesystem::path& replay);

}  // namespace tvx::fuzz
