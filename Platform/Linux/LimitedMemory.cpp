// SPDX-License-Identifier: MIT
#include "Platform/LimitedMemory.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include <dlfcn.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tvx::Platform
{

namespace
{

// The bytes of memory that this process has; 0 when the system does not tell.
std::size_t GetSize()
{
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// Whether something in this process watches its memory, however it came here: built in or loaded before the program. Each
// is known by a function that it alone has.
bool IsWatched()
{
    constexpr const char* functions[] = {"__asan_init", "__hwasan_init", "__lsan_init",
                                         "__msan_init", "__tsan_init",   "_vgnU_freeres"};
    return std::any_of(std::begin(functions), std::end(functions),
                       [](const char* function) { return dlsym(RTLD_DEFAULT, function) != nullptr; });
}

}  // namespace

LimitedMemory::LimitedMemory(std::size_t bytes)
{
    rlimit limit{};
    if (!IsPossible() || getrlimit(RLIMIT_AS, &limit) != 0)
        return;
    before_ = limit.rlim_cur;
    limit.rlim_cur = std::min<rlim_t>(before_, GetSize() + bytes);
    isSet_ = setrlimit(RLIMIT_AS, &limit) == 0;
}

LimitedMemory::~LimitedMemory()
{
    rlimit limit{};
    if (!isSet_ || getrlimit(RLIMIT_AS, &limit) != 0)
        return;
    limit.rlim_cur = before_;
    setrlimit(RLIMIT_AS, &limit);
}

bool LimitedMemory::IsPossible()
{
    return !IsWatched() && GetSize() != 0;
}

}  // namespace tvx::Platform
