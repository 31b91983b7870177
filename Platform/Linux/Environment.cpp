// SPDX-License-Identifier: MIT
#include "Platform/Environment.h"

#include <cstdlib>

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

}  // namespace tvx::Platform
