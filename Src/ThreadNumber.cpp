// SPDX-License-Identifier: MIT
#include "Src/ThreadNumber.h"

#include <atomic>

namespace tvx
{

namespace
{

// Without a destructor, which would be called in a module that may be gone.
constinit thread_local std::uint64_t ownNumber = 0;

constinit std::atomic<std::uint64_t> lastNumber{0};

}  // namespace

std::uint64_t GetThreadNumber() noexcept
{
    auto& number = ownNumber;
    if (number == 0)
        number = lastNumber.fetch_add(1, std::memory_order_relaxed) + 1;
    return number;
}

}  // namespace tvx
