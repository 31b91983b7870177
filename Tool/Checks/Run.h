// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/StandardStreams.h"
#include "Tool/Checks/Plan.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

namespace tvx::check
{

// What comes of a deed that works with a module: how it ended a trial, or that an exception left the module.
Outcome TryOut(const std::function<void()>& deed);

// Numbers that are the same for the same seed and name: each check and each walk has its own, whichever others run.
std::uint64_t MixSeed(std::uint64_t seed, std::string_view name);

// Runs a check in this process.
Outcome Run(const PlannedCheck& planned, const std::filesystem::path& file, std::uint64_t seed,
            const Platform::OutputDiversion& output);

// Runs a check that this process is for. What it found is told before anything of the module is even released, since that
// may take the process with it; telling has to end the process.
void RunAlone(const PlannedCheck& planned, const std::filesystem::path& file, std::uint64_t seed,
              const Platform::OutputDiversion& output, const std::function<void(const Outcome&)>& tellAndEnd);

}  // namespace tvx::check
