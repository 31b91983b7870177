// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/SubscribedHandler.h"

#include <new>
#include <type_traits>
#include <utility>

namespace tvx
{

// A function that hears an event until the end of the scope. Holds no reference on the sender and survives its death,
// of which it learns by "Destroyed"; ending it then touches nothing. Its function may end it, and so may any other
// function.
//
// Threads: the function runs on the thread that fires. Once the subscription has ended, no other thread is inside the
// function any more, so it must not be ended while holding a lock that the function takes. The sender must not die on
// one thread while the subscription begins or ends on another; nobody but the user can see to that.
class [[nodiscard]] Subscription
{
public:
    // An inactive one.
    Subscription() = default;
    // Takes over a handler that listens; Subscribe makes one.
    explicit Subscription(Ref<detail::ISubscribedHandler> handler) noexcept : handler_(std::move(handler)) {}
    ~Subscription() { End(); }

    // The other one is inactive afterwards.
    Subscription(Subscription&&) noexcept = default;

    // The new subscription is in place before the old one ends.
    Subscription& operator=(Subscription&& other) noexcept
    {
        Subscription ended(std::move(other));
        std::swap(handler_, ended.handler_);
        return *this;
    }

    // Whether the function may still be called: not when memory was exhausted, the sender has died or the subscription
    // ended.
    explicit operator bool() const noexcept { return handler_ && handler_->IsListening(); }

    // Ends it before the scope does. Also from inside its function, which runs to its end.
    void End() noexcept
    {
        const auto ended = std::exchange(handler_, nullptr);
        if (ended)
            ended->StopListening();
    }

private:
    Ref<detail::ISubscribedHandler> handler_;
};

namespace detail
{

// Keeps a parameter out of the deduction of T: the operation alone says which interface is meant.
template <class T>
struct NotDeduced
{
    using type = T;
};

// Want of memory gives a subscription that is not active.
template <class Sender, class Function>
Subscription MakeSubscription(Sender& sender, SubscribeOperation<Sender> operation, Function&& function)
try
{
    auto handler =
        MakeRef<SubscribedHandler<Sender, std::decay_t<Function>>>(sender, operation, std::forward<Function>(function));
    handler->StartListening();
    return Subscription(std::move(handler));
}
catch (const std::bad_alloc&)
{
    return Subscription();
}

}  // namespace detail

// Calls function(const Event&) with every event that the sender's operation subscribes to. An exception out of function
// ends there and is forgotten.
//   sender     borrowed
//   operation  for example &ISimpleMap::SubscribeChanged
//   function   kept until the subscription has ended
// Fails: an inactive subscription for want of memory. A sender that has no memory for its part cannot say so: function
// is then never called, or the subscription does not learn of the sender's death and must not outlive it.
template <class Sender, class Function>
Subscription Subscribe(typename detail::NotDeduced<Sender>::type& sender, detail::SubscribeOperation<Sender> operation,
                       Function&& function)
{
    return detail::MakeSubscription(sender, operation, std::forward<Function>(function));
}

// Calls function(const Event&) when object is destroyed; else as Subscribe. The event's sender must not be called any
// more, nor may anything else of the object; other subscriptions to it that this module made may be ended there. What
// ends elsewhere while the object is being destroyed, in the destructor of an item that it lets go of for example,
// would still call it.
template <class Function>
Subscription SubscribeDestroyed(IObject& object, Function&& function)
{
    return detail::MakeSubscription<IObject>(object, nullptr, std::forward<Function>(function));
}

}  // namespace tvx
