// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/EventKeys.h"
#include "Helpers/OwnerLock.h"
#include "Interfaces/IObject.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <mutex>
#include <vector>

namespace tvx
{

// Who wants to hear of which event, in the order of subscription. Handlers are kept without a reference. Identifiers and names
// are constants: what stands at their addresses never changes.
//
// Any thread. The list's recursive lock is held while handlers run, and they may subscribe, unsubscribe and fire again: a
// subscription removed before its turn is not called, one added meanwhile is called in its turn.
class EventSubscriberList
{
public:
    // Adds a subscription of handler, unless it is null, to the event at the end; one that is there already counts once more.
    void Subscribe(const char* interfaceId, const char* eventName, IEventHandler* handler, std::uint64_t userData)
    {
        if (handler == nullptr)
            return;
        const std::lock_guard<OwnerLock> guard(lock_);
        auto& key = keys_.FindOrAdd({interfaceId, eventName});
        subscriptions_.push_back({&key, handler, userData});
        ++key.uses;
        ++count_;
    }

    // Removes the oldest subscription of handler to the event; null removes every subscription of the list.
    void Unsubscribe(const char* interfaceId, const char* eventName, const IEventHandler* handler) noexcept
    {
        const std::lock_guard<OwnerLock> guard(lock_);
        const auto* const key = keys_.Find({interfaceId, eventName});
        for (auto& subscription : subscriptions_)
        {
            const bool meant = subscription.handler == handler && subscription.key == key;
            if (subscription.key == nullptr || (handler != nullptr && !meant))
                continue;
            Remove(subscription);
            if (handler != nullptr)
                break;
        }
        DropRemoved();
    }

    // Whether anybody is subscribed to anything. Waits for nobody.
    bool HasSubscribers() const noexcept { return count_.load(std::memory_order_acquire) > 0; }

    // Calls every handler of the event on this thread, in the order of subscription. A handler's result is ignored, and so
    // is an exception that it lets out.
    //
    // Not inlined: its callers have nothing to save where nobody ever subscribed.
    [[gnu::noinline]] void Fire(const char* interfaceId, const char* eventName, IObject* sender,
                                std::uint64_t param) noexcept
    {
        const std::lock_guard<OwnerLock> guard(lock_);
        const EventName event{interfaceId, eventName};
        const auto* const key = keys_.Find(event);
        if (key == nullptr)
            return;
        ++firing_;
        // Handlers may make the list longer, which may move it.
        for (std::ptrdiff_t i = 0; subscriptions_.begin() + i != subscriptions_.end(); ++i)
        {
            const auto& subscription = subscriptions_.begin()[i];
            if (subscription.key == key)
                Call(subscription, event, sender, param);
        }
        --firing_;
        DropRemoved();
    }

private:
    struct Subscription
    {
        EventKeys::Key* key;  // null once removed
        IEventHandler* handler;
        std::uint64_t userData;
    };

    static void Call(const Subscription& subscription, const EventName& event, IObject* sender,
                     std::uint64_t param) noexcept
    {
        try
        {
            subscription.handler->OnEvent(sender, event.interfaceId, event.name, param, subscription.userData);
        }
        catch (...)
        {
        }
    }

    void Remove(Subscription& subscription) noexcept
    {
        --count_;
        --subscription.key->uses;
        subscription.key = nullptr;
        hasRemoved_ = true;
    }

    // While a walk is under way removed subscriptions only stand empty, so that the walk never loses its place, and its key
    // stays.
    void DropRemoved() noexcept
    {
        if (firing_ == 0 && hasRemoved_)
            EraseRemoved();
    }

    [[gnu::noinline]] void EraseRemoved() noexcept
    {
        hasRemoved_ = false;
        const auto isRemoved = [](const Subscription& subscription) { return subscription.key == nullptr; };
        subscriptions_.erase(std::remove_if(subscriptions_.begin(), subscriptions_.end(), isRemoved),
                             subscriptions_.end());
        keys_.DropUnused();
    }

    OwnerLock lock_;
    EventKeys keys_;
    std::vector<Subscription> subscriptions_;
    std::atomic<std::size_t> count_{0};  // of subscriptions that have not been removed
    int firing_ = 0;
    bool hasRemoved_ = false;
};

}  // namespace tvx
