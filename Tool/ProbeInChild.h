// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/ChildProcess.h"
#include "Tool/Console.h"

#include <chrono>
#include <string>

namespace tvx::tool
{

// Has this program probe a module in a process of its own, with all that it prints.
Platform::ChildRun ProbeInChild(const std::string& file, bool json, std::chrono::seconds limit);

// How that ended: the child's own exit code, or after a complaint that of a module that crashed or took too long.
ExitCode GetExitCode(const std::string& file, const Platform::ChildRun& probe);

}  // namespace tvx::tool
