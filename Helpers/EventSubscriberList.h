// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"

#include <algorithm>
#include <cstring>
#include <list>
#include <mutex>
#include <string>
#include <string_view>

namespace tvx
{

// Who wants to hear of which event, in the order of subscription. Handlers are kept without a reference.
//
// Any thread. The list's recursive lock is held while handlers run, and they may subscribe, unsubscribe and fire again: a
// subscription removed before its turn is not called, one added meanwhile is called in its turn.
class EventSubscriberList
{
public:
    // Adds a subscription of handler to the event at the end; one that is there already counts once more.
    void Subscribe(const char* interfaceId, const char* eventName, IEventHandler* handler, std::uint64_t userData)
    {
        const std::lock_guard<std::recursive_mutex> guard(lock_);
        subscriptions_.push_back({MakeKey(interfaceId, eventName), handler, userData});
    }

    // Removes the oldest subscription of handler to the event; null removes every subscription of the list.
    void Unsubscribe(const char* interfaceId, const char* eventName, const IEventHandler* handler) noexcept
    {
        const std::lock_guard<std::recursive_mutex> guard(lock_);
        for (auto& subscription : subscriptions_)
        {
            const bool meant = subscription.handler == handler && IsKey(subscription.key, interfaceId, eventName);
            if (handler != nullptr && !meant)
                continue;
            subscription.handler = nullptr;
            if (handler != nullptr)
                break;
        }
        DropRemoved();
    }

    // Calls every handler of the event on this thread, in the order of subscription. A handler's result is ignored, and so
    // is an exception that it lets out.
    void Fire(const char* interfaceId, const char* eventName, IObject* sender, std::uint64_t param) noexcept
    {
        const std::lock_guard<std::recursive_mutex> guard(lock_);
        ++firing_;
        for (const auto& subscription : subscriptions_)
        {
            if (subscription.handler != nullptr && IsKey(subscription.key, interfaceId, eventName))
                Call(subscription, interfaceId, eventName, sender, param);
        }
        --firing_;
        DropRemoved();
    }

private:
    struct Subscription
    {
        std::string key;
        IEventHandler* handler;  // null once removed
        std::uint64_t userData;
    };

    static constexpr std::string_view Separator = "::";

    static std::string MakeKey(const char* interfaceId, const char* eventName)
    {
        return std::string(interfaceId).append(Separator).append(eventName);
    }

    // Whether MakeKey(interfaceId, eventName) would be key, without making it.
    static bool IsKey(std::string_view key, std::string_view interfaceId, std::string_view eventName) noexcept
    {
        return key.size() == interfaceId.size() + Separator.size() + eventName.size() &&
               key.substr(0, interfaceId.size()) == interfaceId &&
               key.substr(interfaceId.size(), Separator.size()) == Separator &&
               key.substr(interfaceId.size() + Separator.size()) == eventName;
    }

    static void Call(const Subscription& subscription, const char* interfaceId, const char* eventName, IObject* sender,
                     std::uint64_t param) noexcept
    {
        try
        {
            subscription.handler->OnEvent(sender, interfaceId, eventName, param, subscription.userData);
        }
        catch (...)
        {
        }
    }

    // While a walk is under way removed subscriptions only stand empty, so that the walk never loses its place.
    void DropRemoved() noexcept
    {
        if (firing_ == 0)
            subscriptions_.remove_if([](const Subscription& subscription) { return subscription.handler == nullptr; });
    }

    std::recursive_mutex lock_;
    std::list<Subscription> subscriptions_;
    int firing_ = 0;
};

}  // namespace tvx
