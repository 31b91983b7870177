// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleFile.h"
#include "Host/Outcome.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tvx::host
{

// The names of what a module's file shows to others, functions and data, read without running any of its code: sorted by
// their bytes, each once. What the file only asks of others is not among them.
// Fails: CannotRead, NotAModule, DamagedModule, NoDocument when the file has nothing to look them up in, and so no
// configuration document either.
Outcome<std::vector<std::string>> ReadExportedSymbols(const std::filesystem::path& path);
Outcome<std::vector<std::string>> ReadExportedSymbols(ModuleFile& file);

}  // namespace tvx::host
