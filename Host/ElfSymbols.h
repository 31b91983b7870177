// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleFile.h"

#include <string>
#include <vector>

namespace tvx::host
{

// The names of the symbols by which other files of a process find code and data of an ELF file, for whatever processor:
// sorted, each once. Names of versions are not among them.
Outcome<std::vector<std::string>> ReadElfSymbols(ModuleFile& file);

}  // namespace tvx::host
