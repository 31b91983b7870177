// SPDX-License-Identifier: MIT
#pragma once

#include <latch>
#include <thread>
#include <vector>

namespace tvx::test
{

constexpr int ThreadCount = 8;

// Runs work(number) on eight threads that start together, and waits for them all.
template <class Work>
void RunTogether(Work&& work)
{
    std::latch start(ThreadCount);
    std::vector<std::thread> threads;
    for (int number = 0; number < ThreadCount; ++number)
    {
        threads.emplace_back(
            [&start, &work, number]
            {
                start.arrive_and_wait();
                work(number);
            });
    }
    for (auto& thread : threads)
        thread.join();
}

}  // namespace tvx::test
