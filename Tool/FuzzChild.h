// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Console.h"
#include "Tool/Fuzz/Replay.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace tvx::tool
{

// How the process of a walk ends when it comes to an end.
enum class FuzzEnd
{
    ExitCode,   // with the exit code itself
    ChildCode,  // with what a child of this program adds to it
};

// Walks at random until the time is over or something shows, says before each walk which it is, and ends the process.
[[noreturn]] void WalkAsChild(const Console& console, const std::string& file, const fuzz::Walk& walk,
                              std::uint64_t seed, std::chrono::seconds time);

// Follows one walk and ends the process.
[[noreturn]] void FollowReplay(const Console& console, const std::string& file, const fuzz::Replay& replay,
                               FuzzEnd end);

}  // namespace tvx::tool
