// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/EventSubscriberList.h"
#include "Platform/ThreadId.h"

#include <atomic>
#include <memory>

namespace tvx
{

// The events and the owner thread of an object. The lists of subscribers are made by the first subscription; an object
// nobody listens to carries one pointer for them.
class ObjectImpl
{
public:
    ObjectImpl(const ObjectImpl&) = delete;
    ObjectImpl& operator=(const ObjectImpl&) = delete;

protected:
    ObjectImpl() noexcept : thread_(Platform::GetCurrentThreadId()) {}

    // The sender of "Destroyed" is the address of this part: an identity that must not be called, since the object is
    // already half destroyed.
    ~ObjectImpl()
    {
        if (auto* const lists = lists_.load(std::memory_order_acquire))
            FireDestroyed(lists);
    }

    // Subscribes handler to an event of the class's own interfaces, or unsubscribes it. Without memory nothing is subscribed.
    // Identifier and name are constants, here and in Fire: what stands at their addresses never changes.
    void Connect(const char* interfaceId, const char* eventName, IEventHandler* handler, std::uint64_t cookie,
                 bool connect) noexcept
    {
        ConnectTo(&EventLists::own, interfaceId, eventName, handler, cookie, connect);
    }

    // The same for "Destroyed" of IObject.
    void ConnectDestroyed(IEventHandler* handler, std::uint64_t userData, bool connect) noexcept
    {
        ConnectTo(&EventLists::destroyed, IObject::Id, DestroyedEvent, handler, userData, connect);
    }

    // Calls every handler of an event of the class's own interfaces, on this thread, before it returns.
    void Fire(const char* interfaceId, const char* eventName, IObject* sender, std::uint64_t param) noexcept
    {
        if (auto* const lists = lists_.load(std::memory_order_acquire))
            lists->own.Fire(interfaceId, eventName, sender, param);
    }

    // Whether anybody is subscribed to one of those, for who saves the work where nobody is.
    bool HasSubscribers() const noexcept
    {
        const auto* const lists = lists_.load(std::memory_order_acquire);
        return lists != nullptr && lists->own.HasSubscribers();
    }

    // What an event carries as its parameter: an object's address, 0 for none.
    static std::uint64_t ToParameter(const void* object) noexcept { return reinterpret_cast<std::uintptr_t>(object); }

    // The number of the object's thread, at first the one that constructed it.
    std::uint32_t GetThread() const noexcept { return thread_; }

    // Replaces it.
    void SetThread(std::uint32_t thread) noexcept { thread_ = thread; }

private:
    // Destroyed in reverse order: first the list of the class's own events.
    struct EventLists
    {
        EventSubscriberList destroyed;
        EventSubscriberList own;
    };

    static constexpr const char* DestroyedEvent = "Destroyed";

    // Takes the lists. Not inlined: most objects leave the destructor at once.
    [[gnu::noinline]] void FireDestroyed(EventLists* taken) noexcept
    {
        const std::unique_ptr<EventLists> lists(taken);
        lists->destroyed.Fire(IObject::Id, DestroyedEvent, reinterpret_cast<IObject*>(this), 0);
    }

    void ConnectTo(EventSubscriberList EventLists::*list, const char* interfaceId, const char* eventName,
                   IEventHandler* handler, std::uint64_t userData, bool connect) noexcept
    {
        if (connect && handler != nullptr)
            SubscribeTo(list, interfaceId, eventName, handler, userData);
        auto* const lists = lists_.load(std::memory_order_acquire);
        if (!connect && lists != nullptr)
            (lists->*list).Unsubscribe(interfaceId, eventName, handler);
    }

    void SubscribeTo(EventSubscriberList EventLists::*list, const char* interfaceId, const char* eventName,
                     IEventHandler* handler, std::uint64_t userData) noexcept
    {
        try
        {
            (GetLists().*list).Subscribe(interfaceId, eventName, handler, userData);
        }
        catch (...)  // the operations that subscribe have no result to say it with
        {
        }
    }

    // Two threads may come first at once: one of them gets its lists in, the other takes those.
    EventLists& GetLists()
    {
        auto* lists = lists_.load(std::memory_order_acquire);
        if (lists != nullptr)
            return *lists;
        auto made = std::make_unique<EventLists>();
        if (lists_.compare_exchange_strong(lists, made.get(), std::memory_order_acq_rel))
            lists = made.release();
        return *lists;
    }

    std::atomic<EventLists*> lists_{nullptr};
    std::uint32_t thread_;
};

}  // namespace tvx
