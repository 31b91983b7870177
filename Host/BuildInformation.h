// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"

#include <filesystem>
#include <string>

namespace tvx::host
{

// What a module's file says of its own build; both are empty where it says nothing.
struct BuildInformation
{
    std::string version;  // such as 1.0.0
    std::string comment;  // on the build, for people
};

// Reads it without running any of the module's code.
// Fails: as ReadEmbeddedText, but for a module that says nothing.
Outcome<BuildInformation> ReadBuildInformation(const std::filesystem::path& file);

}  // namespace tvx::host
