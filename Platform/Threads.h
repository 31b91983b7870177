// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace tvx::Platform
{

// How many threads this process has at the moment, the calling one included; 0 when the system does not tell.
std::size_t CountThreads();

}  // namespace tvx::Platform
