// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tvx::Platform
{

// Stands between the folders of a search path, as the system's own search paths have it.
extern const char SearchPathSeparator;

// The running program's file; empty when the system does not tell.
std::filesystem::path GetProgramFile();

// The folder of that file.
std::filesystem::path GetProgramFolder();

// Sets a variable of this process's environment; a null value removes it. Nobody else may be reading the environment meanwhile.
void SetVariable(const char* name, const char* value);

// The variables of this process as "NAME=value", in the system's order.
std::vector<std::string> GetVariables();

// Where this process and those that it starts make temporary files from now on. As SetVariable.
void SetTemporaryFolder(const std::filesystem::path& folder);

}  // namespace tvx::Platform
