// SPDX-License-Identifier: MIT
#include "Host/HandlerGuard.h"

#include "Host/TracedObjects.h"
#include "Platform/ClassName.h"

#include <memory>

namespace tvx::host
{

namespace
{

void NoteGone(std::uint64_t guard)
{
    reinterpret_cast<HandlerGuard*>(static_cast<std::uintptr_t>(guard))->NoteGone();
}

}  // namespace

// What keeps the listeners is never destroyed: objects tell their end until the process has ended.
Ref<EndListener> EndListener::Make(OnEnd onEnd)
{
    static std::mutex lock;
    static auto& kept = *std::make_unique<std::vector<Ref<EndListener>>>().release();
    const std::lock_guard<std::mutex> guard(lock);
    return kept.emplace_back(MakeRef<EndListener>(std::move(onEnd)));
}

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
    const auto tell = [&]
    {
        return std::string("event ") + eventName + " of " + interfaceId + " for a handler that is gone (" + className_ +
               ")";
    };
    objects_.GetLog().AddFindingOf(tell);
    return TVX_E_FAIL;
}

// The sender may be a mere address, nothing to be called.
IObject* HandlerGuard::FindFace(IObject* sender) const
{
    const auto face = objects_.FindFace(reinterpret_cast<std::uintptr_t>(sender));
    return reinterpret_cast<IObject*>(static_cast<std::uintptr_t>(face));
}

HandlerGuards::HandlerGuards(TracedObjects& objects) : objects_(objects), listener_(EndListener::Make(&NoteGone)) {}

HandlerGuards::~HandlerGuards()
{
    listener_->Forget();
}

// The guard of one that has gone is no longer found, so that the new one is unsubscribed as itself if it gets no guard.
HandlerGuard* HandlerGuards::FindKnown(IEventHandler* handler, bool subscribes)
{
    const std::lock_guard<std::mutex> guard(lock_);
    const auto found = current_.find(handler);
    if (found == current_.end())
        return nullptr;
    if (!subscribes || !found->second->IsGone())
        return found->second;
    current_.erase(found);
    return nullptr;
}

HandlerGuard* HandlerGuards::Make(IEventHandler& handler)
{
    const auto made = MakeRef<HandlerGuard>(handler, objects_);
    auto* const current = Add(handler, made);
    if (current == made.Get())
        handler.SubscribeDestroyed(listener_.Get(), reinterpret_cast<std::uintptr_t>(current));
    return current;
}

// Another thread may have come first. Without memory for the second book the handler is in neither.
HandlerGuard* HandlerGuards::Add(IEventHandler& handler, const Ref<HandlerGuard>& made)
{
    const std::lock_guard<std::mutex> guard(lock_);
    const auto [current, isNew] = current_.emplace(&handler, made.Get());
    if (!isNew)
        return current->second;
    try
    {
        guards_.push_back(made);
    }
    catch (...)
    {
        current_.erase(current);
        throw;
    }
    return made.Get();
}

}  // namespace tvx::host
