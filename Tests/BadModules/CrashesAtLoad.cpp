// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

#include <cstdlib>

namespace
{

__attribute__((constructor)) void Crash()
{
    std::abort();
}

}  // namespace
