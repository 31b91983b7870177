// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

namespace tvx::test
{

// A thread that does what it is told, one thing after the other.
class Worker
{
public:
    Worker() : thread_([this] { Run(); }) {}
    ~Worker()
    {
        Do(nullptr);
        thread_.join();
    }

    // Waits until work is done.
    void Do(std::function<void()> work)
    {
        std::unique_lock guard(lock_);
        work_ = std::move(work);
        waiting_ = true;
        changed_.notify_all();
        changed_.wait(guard, [this] { return !waiting_; });
    }

private:
    void Run()
    {
        for (bool more = true; more;)
        {
            std::unique_lock guard(lock_);
            changed_.wait(guard, [this] { return waiting_; });
            more = work_ != nullptr;
            if (more)
                work_();
            waiting_ = false;
            changed_.notify_all();
        }
    }

    std::mutex lock_;
    std::condition_variable changed_;
    std::function<void()> work_;
    bool waiting_ = false;
    std::thread thread_;
};

}  // namespace tvx::test
