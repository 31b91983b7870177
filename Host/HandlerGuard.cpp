// SPDX-License-Identifier: MIT
#include "Host/HandlerGuard.h"

#include "Host/TracedObjects.h"
#include "Platform/ClassName.h"

namespace tvx::host
{

namespace
{

void NoteGone(std::uint64_t guard)
{
    reinterpret_cast<HandlerGuard*>(static_cast<std::uintptr_t>(guard))->NoteGone();
}

}  // namespace

HandlerGuard::HandlerGuard(IEventHandler& handler, TracedObjects& objects)
    : handler_(handler),
      objects_(objects),
      className_(Platform::GetClassNameOf(handler))
{
}

Result HandlerGuard::OnEvent(IObject* sender, const char* interfaceId, const char* eventName, std::uint64_t param,
                             std::uint64_t userData)
{
    if (!IsGone())
        return handler_.OnEvent(FindFace(sender), interfaceId, eventName, objects_.FindFace(param), userData);
    objects_.GetLog().AddFinding(std::string("event ") + eventName + " of " + interfaceId +
                                 " for a handler that is gone (" + className_ + ")");
    return TVX_E_FAIL;
}

// The sender may be a mere address, nothing to be called.
IObject* HandlerGuard::FindFace(IObject* sender) const
{
    const auto face = objects_.FindFace(reinterpret_cast<std::uintptr_t>(sender));
    return reinterpret_cast<IObject*>(static_cast<std::uintptr_t>(face));
}

HandlerGuards::HandlerGuards(TracedObjects& objects) : objects_(objects), listener_(MakeRef<EndListener>(&NoteGone)) {}

HandlerGuards::~HandlerGuards()
{
    for (const auto& guard : guards_)
    {
        if (!guard->IsGone())
            guard->GetHandler().UnsubscribeDestroyed(listener_.Get());
    }
}

IEventHandler* HandlerGuards::Get(IEventHandler& handler, bool subscribes)
{
    {
        const std::lock_guard<std::mutex> guard(lock_);
        auto* const found = Find(handler, subscribes);
        if (found != nullptr)
            return found;
    }
    if (!subscribes)
        return &handler;
    const auto made = MakeRef<HandlerGuard>(handler, objects_);
    {
        const std::lock_guard<std::mutex> guard(lock_);
        auto* const found = Find(handler, subscribes);  // another thread may have come first
        if (found != nullptr)
            return found;
        guards_.push_back(made);
        current_[&handler] = made.Get();
    }
    handler.SubscribeDestroyed(listener_.Get(), reinterpret_cast<std::uintptr_t>(made.Get()));
    return made.Get();
}

// What stands at the address of a handler that has gone is a new one when it subscribes.
HandlerGuard* HandlerGuards::Find(IEventHandler& handler, bool subscribes) const
{
    const auto found = current_.find(&handler);
    const bool isMeant = found != current_.end() && !(subscribes && found->second->IsGone());
    return isMeant ? found->second : nullptr;
}

}  // namespace tvx::host
