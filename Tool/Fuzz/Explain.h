// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Fuzz/WalkProcess.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace tvx::fuzz
{

// What a walk came to: the shortest one found that still shows it.
struct Finding
{
    Replay replay;
    std::uint64_t seed;   // of the walk as it was found
    bool crashed;         // it took its process with it, or did not end
    bool comesAgain;      // the replay shows it; else it is the walk as it was found
    std::string message;  // one line
};

// Looks for the shortest walk that shows what a process of random walks of one sort came to, for half a minute at most.
// Where the last of its walks does not show it alone, those before it go with it.
// The scratch folder gets a file of a name of its own, and loses it again.
Finding Explain(const std::filesystem::path& file, const Walk& walk, const WalkRun& seen,
                const std::filesystem::path& scratch);

}  // namespace tvx::fuzz
