// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/StandardStreams.h"
#include "Tool/Checks/Plan.h"

#include <cstdint>
#include <filesystem>
#include <functional>

namespace tvx::check
{

using TellOutcome = std::function<void(const Outcome&)>;

// Runs a check in this process, and tells what it found before anything of the module is unloaded.
void Run(const PlannedCheck& planned, const std::filesystem::path& file, std::uint64_t seed,
         const Platform::OutputDiversion& output, const TellOutcome& tell);

// Runs a check that this process is for. What it found is told before anything of the module is even released, since that
// may take the process with it; telling has to end the process.
void RunAlone(const PlannedCheck& planned, const std::filesystem::path& file, std::uint64_t seed,
              const Platform::OutputDiversion& output, const TellOutcome& tellAndEnd);

}  // namespace tvx::check
