// SPDX-License-Identifier: MIT
#include "Platform/Environment.h"

namespace tvx::Platform
{

const char SearchPathSeparator = ':';

std::filesystem::path GetProgramFolder()
{
    std::error_code failed;
    return std::filesystem::read_symlink("/proc/self/exe", failed).parent_path();
}

}  // namespace tvx::Platform
