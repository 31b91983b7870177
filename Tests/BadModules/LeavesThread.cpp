// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

#include <atomic>
#include <thread>

namespace
{

std::atomic<std::uint64_t> turns{0};

// A thread that goes on in the module's code when that is gone.
__attribute__((constructor)) void Start()
{
    std::thread(
        []
        {
            while (true)
            {
                ++turns;
            }
        })
        .detach();
}

}  // namespace
