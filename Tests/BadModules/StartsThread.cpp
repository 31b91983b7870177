// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace
{

// A thread of the module's own from loading to unloading.
class Companion
{
public:
    ~Companion()
    {
        {
            const std::lock_guard guard(lock_);
            ended_ = true;
        }
        wake_.notify_one();
        thread_.join();
    }

private:
    void Wait()
    {
        std::unique_lock guard(lock_);
        wake_.wait(guard, [&] { return ended_; });
    }

    std::mutex lock_;
    std::condition_variable wake_;
    bool ended_ = false;
    std::thread thread_{[this] { Wait(); }};
};

Companion companion;

}  // namespace
