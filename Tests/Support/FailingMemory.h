// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>

// Want of memory on request: a program with Tests/Support/OperatorNew.cpp has its own operator new, which looks here.
namespace tvx::test
{

// What operator new does on this thread.
struct ThreadMemory
{
    static constexpr std::size_t Never = std::numeric_limits<std::size_t>::max();

    std::size_t allocations = 0;
    std::size_t failFrom = Never;  // the number of the first allocation that fails
    std::size_t failUntil = Never;
    std::size_t failures = 0;
    bool paused = false;
};

inline constinit thread_local ThreadMemory threadMemory;

// Which allocation fails, counted from 0, and whether all later ones do, too.
struct MemoryFailure
{
    std::size_t first;
    bool lasting;
};

// As long as it lives, allocations of this thread fail as it was told.
class FailingMemory
{
public:
    explicit FailingMemory(MemoryFailure failure) noexcept
    {
        threadMemory = {.failFrom = failure.first,
                        .failUntil = failure.lasting ? ThreadMemory::Never : failure.first + 1};
    }
    ~FailingMemory() { threadMemory = {}; }
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    static bool HasFailed() noexcept { return threadMemory.failures > 0; }
};

// As long as it lives, this thread's allocations neither count nor fail: for code of the test's own that the operation
// under test calls.
class OwnMemory
{
public:
    OwnMemory() noexcept : pausedBefore_(threadMemory.paused) { threadMemory.paused = true; }
    ~OwnMemory() { threadMemory.paused = pausedBefore_; }
    OwnMemory(const OwnMemory&) = delete;
    OwnMemory& operator=(const OwnMemory&) = delete;

private:
    bool pausedBefore_;
};

template <class Call>
std::size_t CountAllocations(Call&& call)
{
    const auto before = threadMemory.allocations;
    call();
    return threadMemory.allocations - before;
}

// Calls attempt with every failure that an operation can meet: each of its allocations, alone and with all that follow. An
// attempt makes the operation on a new object and tells whether memory failed; the first in which it did not is the last.
template <class Attempt>
void SweepFailures(Attempt&& attempt)
{
    for (const bool lasting : {false, true})
    {
        std::size_t first = 0;
        while (attempt(MemoryFailure{first, lasting}) && !testing::Test::HasFailure())
            ++first;
        EXPECT_GT(first, 0U) << "nothing was allocated";
    }
}

}  // namespace tvx::test
