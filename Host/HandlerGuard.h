// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvx::host
{

class TracedObjects;

// Hears of the end of objects; userData says of which. It stays as long as the process: objects that outlive the one
// who wanted to know still have it.
class EndListener final : public ClassImpl<EndListener, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;
    using OnEnd = std::function<void(std::uint64_t userData)>;

    explicit EndListener(OnEnd onEnd) : onEnd_(std::move(onEnd)) {}

    static Ref<EndListener> Make(OnEnd onEnd);

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t, std::uint64_t userData) override
    {
        if (!isForgotten_)
            onEnd_(userData);
        return TVX_OK;
    }

    // Nobody is told of an end that comes later.
    void Forget() { isForgotten_ = true; }

private:
    const OnEnd onEnd_;
    std::atomic<bool> isForgotten_{false};
};

// Stands between an object and a handler of the host program: passes events on, with the faces that the host knows in
// place of the module's own, until the handler has gone. Then every event is a finding.
class HandlerGuard final : public ClassImpl<HandlerGuard, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    HandlerGuard(IEventHandler& handler, TracedObjects& objects);

    Result OnEvent(IObject* sender, const char* interfaceId, const char* eventName, std::uint64_t param,
                   std::uint64_t userData) override;

    bool IsGone() const { return gone_; }
    void NoteGone() { gone_ = true; }

private:
    IObject* FindFace(IObject* sender) const;

    IEventHandler& handler_;
    TracedObjects& objects_;
    const std::string className_;
    std::atomic<bool> gone_{false};
};

// One guard for each handler, found by the handler's address. They stay when the handlers have gone. Any thread.
class HandlerGuards
{
public:
    explicit HandlerGuards(TracedObjects& objects);
    ~HandlerGuards();
    HandlerGuards(const HandlerGuards&) = delete;
    HandlerGuards& operator=(const HandlerGuards&) = delete;

    // The guard that the handler has; null for none. Who subscribes at the address of a handler that has gone is a new
    // one, and has none.
    HandlerGuard* FindKnown(IEventHandler* handler, bool subscribes);

    // A guard for a handler that subscribes.
    HandlerGuard* Make(IEventHandler& handler);

private:
    HandlerGuard* Add(IEventHandler& handler, const Ref<HandlerGuard>& made);

    TracedObjects& objects_;
    const Ref<EndListener> listener_;
    std::mutex lock_;
    std::vector<Ref<HandlerGuard>> guards_;
    std::unordered_map<IEventHandler*, HandlerGuard*> current_;
};

}  // namespace tvx::host
