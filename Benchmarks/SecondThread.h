// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

namespace tvx::bench
{

// Makes this a process with a second thread, asleep until this goes: hosts have threads. In a process with a single one the
// standard library counts its shared pointers without locked operations, which is not what such a host would get.
class SecondThread
{
    std::jthread sleeper_{[](const std::stop_token& end)
                          {
                              std::mutex mutex;
                              std::unique_lock<std::mutex> lock(mutex);
                              std::condition_variable_any().wait(lock, end, [] { return false; });
                          }};
};

}  // namespace tvx::bench
