// SPDX-License-Identifier: MIT
#include "Platform/ThreadId.h"

#include <pthread.h>
#include <unistd.h>

namespace tvx::Platform
{

namespace
{

// No destructor: a thread may end after the module that holds this was unloaded.
thread_local std::uint32_t cachedId = 0;

std::uint32_t AskSystem() noexcept
{
    return static_cast<std::uint32_t>(gettid());
}

// The child of a fork goes on in a copy of the thread, with its cached number and another real one.
void RefreshInChild() noexcept
{
    cachedId = AskSystem();
}

// The C library drops the registration when the module is unloaded.
bool RegisterRefresh() noexcept
{
    return pthread_atfork(nullptr, nullptr, &RefreshInChild) == 0;
}

// Not inlined: the caller has nothing to save where the number is known.
[[gnu::noinline]] std::uint32_t AskOnce() noexcept
{
    static const bool refreshes = RegisterRefresh();
    const auto id = AskSystem();
    if (refreshes)
        cachedId = id;
    return id;
}

}  // namespace

std::uint32_t GetCurrentThreadId() noexcept
{
    const auto id = cachedId;
    return id != 0 ? id : AskOnce();
}

}  // namespace tvx::Platform
