// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

#include <cstdio>

namespace
{

// A line that does not end.
__attribute__((destructor)) void Print()
{
    std::fputs("unloaded", stdout);
    std::fflush(stdout);
}

}  // namespace
