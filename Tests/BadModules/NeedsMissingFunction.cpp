// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

extern "C" void TvxNobodyHasThis();

namespace
{

// Needs a function that no host has.
__attribute__((constructor)) void CallIt()
{
    TvxNobodyHasThis();
}

}  // namespace
