// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace tvx
{

// A recursive lock for steps that seldom meet another thread: taking it is one locked operation, giving it back is none.
//
// Who gives it back may miss a thread that begins to wait at that very moment, so waiting threads look again by themselves.
class OwnerLock
{
public:
    OwnerLock() = default;
    OwnerLock(const OwnerLock&) = delete;
    OwnerLock& operator=(const OwnerLock&) = delete;

    // Takes it, once more when the calling thread has it already; else waits while another thread has it.
    void lock() noexcept
    {
        if (!try_lock())
            Wait();
    }

    // The same without waiting: gives false while another thread has it.
    bool try_lock() noexcept
    {
        const auto caller = std::this_thread::get_id();
        std::thread::id found;
        if (!owner_.compare_exchange_strong(found, caller, std::memory_order_acquire, std::memory_order_relaxed) &&
            found != caller)
            return false;
        ++depth_;
        return true;
    }

    // Gives it back, as often as it was taken.
    void unlock() noexcept
    {
        if (--depth_ != 0)
            return;
        owner_.store(std::thread::id(), std::memory_order_release);
        if (waiting_.load(std::memory_order_relaxed) != 0)
            Wake();
    }

private:
    static constexpr std::chrono::milliseconds LookAgain{1};

    [[gnu::noinline]] void Wait() noexcept
    {
        std::unique_lock<std::mutex> guard(mutex_);
        waiting_.fetch_add(1);
        while (!try_lock())
            given_.wait_for(guard, LookAgain);
        waiting_.fetch_sub(1);
    }

    [[gnu::noinline]] void Wake() noexcept
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        given_.notify_one();
    }

    std::atomic<std::thread::id> owner_{std::thread::id()};
    int depth_ = 0;  // of the owner
    std::atomic<int> waiting_{0};
    std::mutex mutex_;
    std::condition_variable given_;
};

}  // namespace tvx
