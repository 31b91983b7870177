// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <latch>
#include <thread>
#include <vector>

// Threads of a check. What runs on them must not use the trial, which is for one thread; an exception that leaves the
// work is thrown again on the thread that waits.
namespace tvx::check
{

constexpr int ThreadCount = 4;

// Runs work(number) on threads that start together, and waits for them all.
template <class Work>
void RunTogether(Work&& work, int threadCount = ThreadCount)
{
    std::latch start(threadCount);
    std::vector<std::exception_ptr> thrown(static_cast<std::size_t>(threadCount));
    const auto run = [&](int number)
    {
        start.arrive_and_wait();
        try
        {
            work(number);
        }
        catch (...)
        {
            thrown[static_cast<std::size_t>(number)] = std::current_exception();
        }
    };
    std::vector<std::thread> threads;
    for (int number = 0; number < threadCount; ++number)
        threads.emplace_back(run, number);
    for (auto& thread : threads)
        thread.join();
    for (const auto& exception : thrown)
    {
        if (exception)
            std::rethrow_exception(exception);
    }
}

// Runs the work on another thread, and waits for its end.
template <class Work>
void RunElsewhere(Work&& work)
{
    RunTogether([&](int) { work(); }, 1);
}

}  // namespace tvx::check
