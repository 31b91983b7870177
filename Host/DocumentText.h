// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleFile.h"
#include "Host/Outcome.h"

#include <filesystem>
#include <string>

namespace tvx::host
{

// The exact bytes of the configuration document embedded in a module's file, read without running any of its code.
// Fails: CannotRead, NotAModule, DamagedModule, NoDocument.
Outcome<std::string> ReadDocumentText(const std::filesystem::path& path);
Outcome<std::string> ReadDocumentText(ModuleFile& file);

}  // namespace tvx::host
