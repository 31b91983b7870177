// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

#include <chrono>
#include <thread>

namespace
{

__attribute__((constructor)) void Hang()
{
    std::this_thread::sleep_for(std::chrono::hours(1));
}

}  // namespace
