// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

#include <cstdio>

namespace
{

// Half a line, with something in it that is no text.
__attribute__((constructor)) void Print()
{
    std::fputs("loa\x01"
               "ded",
               stdout);
    std::fflush(stdout);
}

}  // namespace
