// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace tvx::Platform
{

// Stands between the folders of a search path, as the system's own search paths have it.
extern const char SearchPathSeparator;

// The folder of the running program's file; empty when the system does not tell.
std::filesystem::path GetProgramFolder();

}  // namespace tvx::Platform
