// SPDX-License-Identifier: MIT
#include "Platform/Environment.h"

#include <cstdlib>

#include <unistd.h>

namespace tvx::Platform
{

const char SearchPathSeparator = ':';

std::filesystem::path GetProgramFile()
{
    std::error_code failed;
    return std::filesystem::read_symlink("/proc/self/exe", failed);
}

std::filesystem::path GetProgramFolder()
{
    return GetProgramFile().parent_path();
}

void SetVariable(const char* name, const char* value)
{
    if (value == nullptr)
        unsetenv(name);
    else
        setenv(name, value, 1);
}

std::vector<std::string> GetVariables()
{
    std::vector<std::string> variables;
    for (const char* const* variable = environ; variable != nullptr && *variable != nullptr; ++variable)
        variables.emplace_back(*variable);
    return variables;
}

void SetTemporaryFolder(const std::filesystem::path& folder)
{
    SetVariable("TMPDIR", folder.c_str());
}

}  // namespace tvx::Platform
