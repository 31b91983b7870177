// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <fstream>

#include <sys/resource.h>
#include <unistd.h>

namespace tvx::test
{

// As long as it lives, the process gets so many bytes more from the system, and no others.
class LimitedMemory
{
public:
    explicit LimitedMemory(std::size_t bytes)
    {
        getrlimit(RLIMIT_AS, &before_);
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        auto limit = before_;
        limit.rlim_cur = pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + bytes;
        setrlimit(RLIMIT_AS, &limit);
    }
    ~LimitedMemory() { setrlimit(RLIMIT_AS, &before_); }
    LimitedMemory(const LimitedMemory&) = delete;
    LimitedMemory& operator=(const LimitedMemory&) = delete;

    // The sanitizers end a program when memory is exhausted.
    static constexpr bool IsSurvived()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        return false;
#else
        return true;
#endif
    }

private:
    rlimit before_{};
};

}  // namespace tvx::test
