// SPDX-License-Identifier: MIT
#include "Platform/EnvironmentVariables.h"

#include <unistd.h>

namespace tvx::Platform
{

std::vector<std::string> GetEnvironmentVariables()
{
    std::vector<std::string> variables;
    for (const char* const* variable = environ; variable != nullptr && *variable != nullptr; ++variable)
        variables.emplace_back(*variable);
    return variables;
}

}  // namespace tvx::Platform
