// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace tvx::Platform
{

// The file that an address of this process is mapped from, by the name under which the system loaded it. Empty for
// memory of no file, and for the program itself where the system does not name it.
std::string GetAddressOrigin(const void* address);

}  // namespace tvx::Platform
