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

// Hears of the end of objects; userData says of which.
class EndListener final : public ClassImpl<EndListener, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;
    using OnEnd = std::function<void(std::uint64_t userData)>;

    explicit EndListener(OnEnd onEnd) : onEnd_(std::move(onEnd)) {}

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t, std::uint64_t userData) override
    {
        onEnd_(userData);
        return TVX_OK;
    }

private:
    const OnEnd onEnd_;
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

    IEventHandler& GetHandler() const { return handler_; }
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

    // What the module is given for the handler. A handler that was never subscribed has no guard and is given itself.
    IEventHandler* Get(IEventHandler& handler, bool subscribes);

private:
    HandlerGuard* Find(IEventHandler& handler, bool subscribes) const;

    TracedObjects& objects_;
    const Ref<EndListener> listener_;
    mutable std::mutex lock_;
    std::vector<Ref<HandlerGuard>> guards_;
    std::unordered_map<IEventHandler*, HandlerGuard*> current_;
};

}  // namespace tvx::host
