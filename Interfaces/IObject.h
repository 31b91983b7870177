// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObjectBase.h"

namespace tvx
{

class IEventHandler;

// An object that tells when it is destroyed and remembers the thread that it belongs to.
class IObject : public IObjectBase
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IObject/1.0";

    // Slot 7. Subscribes handler to the event "Destroyed" of this interface, which fires when the last reference is gone. Its
    // param is 0. Its sender is an identity value that must not be called: the object is half destroyed by then.
    //   handler   borrowed, kept without a reference until it is unsubscribed or the object dies; null is ignored
    //   userData  passed back with the event
    // Threads: any. Fails: never; without memory nothing is subscribed.
    virtual void SubscribeDestroyed(IEventHandler* handler, std::uint64_t userData) = 0;

    // Slot 8. Removes the oldest subscription of handler to "Destroyed".
    //   handler  borrowed; null removes every subscription to "Destroyed"
    // Threads: any. Fails: never.
    virtual void UnsubscribeDestroyed(IEventHandler* handler) = 0;

    // Slot 9. Gives the number of the object's thread, at first the one that constructed it.
    // Threads: one at a time. Fails: never.
    virtual std::uint32_t GetOwnerThreadId() = 0;

    // Slot 10. Replaces the number of the object's thread and gives 0.
    //   id  the system's own number of a thread
    // Threads: one at a time. Fails: never.
    virtual Result SetOwnerThreadId(std::uint32_t id) = 0;

protected:
    ~IObject() = default;
};

// Receives events. Users of the framework implement it.
class IEventHandler : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IEventHandler/1.0";

    // Slot 11. Receives one event. It runs on the thread that fired it, under the lock of the sender's subscriber list, and
    // may subscribe and unsubscribe there. The result is ignored.
    //   sender       borrowed; whoever made the call that fired must itself keep a reference on it
    //   interfaceId  borrowed for the call
    //   eventName    borrowed for the call
    //   param        what the event says it is: 0, or the pointer of an object, borrowed for the call
    //   userData     the value given when subscribing
    // Threads: the one that fires. Fails: as the handler likes.
    virtual Result OnEvent(IObject* sender, const char* interfaceId, const char* eventName, std::uint64_t param,
                           std::uint64_t userData) = 0;

protected:
    ~IEventHandler() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IObject::Id[];
[[gnu::weak]] constexpr const char tvx::IEventHandler::Id[];
#endif
