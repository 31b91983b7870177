// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace tvx
{

// The number of the calling thread, from 1 on: its own for as long as this module is loaded, never that of another thread, also
// not one that came before. The first call of a thread gives it one.
//
// Nothing stays behind that would run when the thread ends, so that it may end after the module has been unloaded; loaded
// anew, the module has no numbers of before.
std::uint64_t GetThreadNumber() noexcept;

}  // namespace tvx
