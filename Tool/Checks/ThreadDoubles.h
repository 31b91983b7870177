// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"

#include <atomic>
#include <functional>
#include <thread>

namespace tvx::check
{

// Counts events from any thread and keeps on which one the last came, then runs an action of the caller's own, if there
// is one.
class CountingHandler final : public ClassImpl<CountingHandler, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t, std::uint64_t) override
    {
        lastThread = std::this_thread::get_id();
        ++events;
        if (action)
            action();
        return TVX_OK;
    }

    std::atomic<int> events = 0;
    std::atomic<std::thread::id> lastThread;
    std::function<void()> action;
};

}  // namespace tvx::check
