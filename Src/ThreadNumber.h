// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace tvx
{

// The number of the calling thread: its own as long as the computer runs, never that of another thread, also not one that came
// before or that used this module before it was loaded anew. The first call of a thread gives it one.
//
// Nothing stays behind that would run when the thread ends, so that it may end after the module has been unloaded.
// Throws std::bad_alloc when memory is exhausted.
std::uint64_t GetThreadNumber();

// The same for a thread that has its number; 0 for any other.
std::uint64_t FindThreadNumber() noexcept;

}  // namespace tvx
