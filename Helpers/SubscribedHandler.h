// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/IObject.h"

#include <atomic>
#include <cstdint>
#include <utility>

namespace tvx
{

// An event, as the function of a subscription gets it. Everything is borrowed for the call.
struct Event
{
    IObject* sender;          // whose event it is; must not be called when it is "Destroyed"
    const char* interfaceId;  // the interface that the event belongs to
    const char* eventName;    // its name there
    std::uint64_t param;      // what the event says it is

    // The object that param is when the event says that it is an Interface; null for 0.
    template <class Interface>
    Interface* GetObject() const noexcept
    {
        return reinterpret_cast<Interface*>(static_cast<std::uintptr_t>(param));
    }
};

namespace detail
{

// The shape of every operation that subscribes to one event.
template <class Sender>
using SubscribeOperation = void (Sender::*)(IEventHandler* handler, std::uint64_t cookie, bool subscribe);

// The same for every face of object. An object that is still being made has no reference, and would not survive a
// query.
inline const void* GetIdentity(IObject& object)
{
    if (object.GetRefCount() == 0)
        return static_cast<IObjectBase*>(&object);
    if (const auto root = Query<IObjectBase>(&object))
        return root.Get();
    return static_cast<IObjectBase*>(&object);
}

// The objects of whose destruction a function is just hearing on this thread, the innermost first. Nothing of them may
// be called, and those of their subscriptions that have yet to hear of it do not know.
class DyingObject
{
public:
    explicit DyingObject(const void* identity) noexcept : identity_(identity), outer_(std::exchange(innermost_, this))
    {
    }
    ~DyingObject() { innermost_ = outer_; }
    DyingObject(const DyingObject&) = delete;
    DyingObject& operator=(const DyingObject&) = delete;

    // Whether the object of this identity is one of them.
    static bool IsOne(const void* identity) noexcept
    {
        const auto* dying = innermost_;
        while (dying != nullptr && dying->identity_ != identity)
            dying = dying->outer_;
        return dying != nullptr;
    }

private:
    static inline thread_local const DyingObject* innermost_ = nullptr;

    const void* identity_;
    const DyingObject* outer_;
};

// A handler as its subscription sees it.
class ISubscribedHandler : public IEventHandler
{
public:
    // Whether the sender lives and may still call the handler's function.
    virtual bool IsListening() const noexcept = 0;
    // Unsubscribes from a sender that lives; does nothing when called again.
    virtual void StopListening() noexcept = 0;

protected:
    ~ISubscribedHandler() = default;
};

// Calls a function with the events of one sender, which it knows as long as it listens and the sender lives.
template <class Sender, class Function>
class SubscribedHandler final : public ClassImpl<SubscribedHandler<Sender, Function>, ISubscribedHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    // No operation means "Destroyed", which is then what the function hears.
    template <class Argument>
    SubscribedHandler(Sender& sender, SubscribeOperation<Sender> operation, Argument&& function)
        : sender_(&sender),
          identity_(GetIdentity(sender)),
          operation_(operation),
          function_(std::forward<Argument>(function))
    {
    }

    // The sender's death comes first: when its memory ends in between, no event is heard of a sender whose end is not.
    void StartListening()
    {
        Sender& sender = *sender_.load(std::memory_order_relaxed);
        sender.SubscribeDestroyed(this, DestroyedCookie);
        if (operation_ != nullptr)
            (sender.*operation_)(this, EventCookie, true);
    }

    bool IsListening() const noexcept override { return sender_.load(std::memory_order_acquire) != nullptr; }

    // A dying sender has yet to call this handler, which therefore keeps itself until then.
    void StopListening() noexcept override
    {
        Sender* const sender = sender_.exchange(nullptr, std::memory_order_acq_rel);
        if (sender == nullptr)
            return;
        if (DyingObject::IsOne(identity_))
        {
            self_ = Ref<ISubscribedHandler>(this);
            return;
        }
        if (operation_ != nullptr)
            (sender->*operation_)(this, EventCookie, false);
        sender->UnsubscribeDestroyed(this);
    }

    // The reference is for a function that ends its own subscription.
    Result OnEvent(IObject* sender, const char* interfaceId, const char* eventName, std::uint64_t param,
                   std::uint64_t userData) override
    {
        const Event event{sender, interfaceId, eventName, param};
        const Ref<SubscribedHandler> self(this);
        if (userData == DestroyedCookie)
            return OnSenderDestroyed(event);
        return Call(event);
    }

private:
    static constexpr std::uint64_t EventCookie = 0;
    static constexpr std::uint64_t DestroyedCookie = 1;

    Result OnSenderDestroyed(const Event& event)
    {
        self_ = nullptr;
        const bool listened = sender_.exchange(nullptr, std::memory_order_acq_rel) != nullptr;
        if (!listened || operation_ != nullptr)
            return TVX_OK;
        const DyingObject dying(identity_);
        return Call(event);
    }

    // The sender's list of subscribers would swallow the exception, too; a foreign one may not.
    Result Call(const Event& event) noexcept
    try
    {
        function_(event);
        return TVX_OK;
    }
    catch (...)
    {
        return TVX_E_EXCEPTION;
    }

    std::atomic<Sender*> sender_;
    const void* const identity_;
    const SubscribeOperation<Sender> operation_;
    Ref<ISubscribedHandler> self_;
    Function function_;
};

}  // namespace detail

}  // namespace tvx
