// SPDX-License-Identifier: MIT
#include "Platform/Threads.h"

#include <filesystem>
#include <system_error>

namespace tvx::Platform
{

std::size_t CountThreads()
{
    std::error_code failed;
    std::size_t count = 0;
    for (std::filesystem::directory_iterator thread("/proc/self/task", failed), end; !failed && thread != end;
         thread.increment(failed))
        ++count;
    return count;
}

}  // namespace tvx::Platform
