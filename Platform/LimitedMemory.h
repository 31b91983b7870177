// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace tvx::Platform
{

// As long as it lives, the system gives this process so many bytes of memory more than it has, and then refuses, whichever
// thread asks. Several may live at once when the last one ends first; a stricter limit of anybody's stays in force. Where no
// such limit is possible it does nothing.
class LimitedMemory
{
public:
    // Begins the limit.
    //   bytes  that the process may get beyond those it has
    explicit LimitedMemory(std::size_t bytes);
    ~LimitedMemory();
    LimitedMemory(const LimitedMemory&) = delete;
    LimitedMemory& operator=(const LimitedMemory&) = delete;

    // Whether the system knows such a limit and this process survives it. It does not under a sanitizer or Valgrind, which
    // take memory for themselves and end the program when they get none.
    static bool IsPossible();

private:
    bool isSet_ = false;
    std::size_t before_ = 0;  // the limit before this one
};

}  // namespace tvx::Platform
