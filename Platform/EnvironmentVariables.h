// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace tvx::Platform
{

// The environment variables of this process as "NAME=value", in the system's order.
std::vector<std::string> GetEnvironmentVariables();

}  // namespace tvx::Platform
