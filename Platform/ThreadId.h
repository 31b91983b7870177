// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace tvx::Platform
{

// The system's own number of the calling thread. Cheap: the system is asked once for each thread, and again after a fork.
std::uint32_t GetCurrentThreadId() noexcept;

}  // namespace tvx::Platform
