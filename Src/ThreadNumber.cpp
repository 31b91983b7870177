// SPDX-License-Identifier: MIT
#include "Src/ThreadNumber.h"

#include <boost/thread/tss.hpp>

#include <atomic>
#include <chrono>

namespace tvx
{

namespace
{

// The number itself stands where a pointer would. Without a cleaning function the storage calls nothing here when a thread
// ends; with one it would call into a module that may be gone.
struct Number;
using Numbers = boost::thread_specific_ptr<Number>;

Numbers& GetNumbers()
{
    static Numbers numbers(nullptr);
    return numbers;
}

// A thread may keep the number that this module gave it before it was unloaded and loaded anew at the same place. The clock
// runs faster than threads are made, so that a later module begins behind all numbers of an earlier one.
std::uint64_t MakeNumber() noexcept
{
    static std::atomic<std::uint64_t> next(
        static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()));
    return next.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace

std::uint64_t GetThreadNumber()
{
    static_assert(sizeof(std::uintptr_t) == sizeof(std::uint64_t), "a number does not fit where a pointer stands");
    const auto found = FindThreadNumber();
    if (found != 0)
        return found;
    const auto number = MakeNumber();
    GetNumbers().reset(reinterpret_cast<Number*>(number));
    return number;
}

std::uint64_t FindThreadNumber() noexcept
{
    return reinterpret_cast<std::uintptr_t>(GetNumbers().get());
}

}  // namespace tvx
