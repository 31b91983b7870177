// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Trial.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace tvx::fuzz
{

// An event of an object's own, and the operation that subscribes to it.
template <class Sender>
struct EventKind
{
    const char* name;
    void (Sender::*subscribe)(IEventHandler* handler, std::uint64_t cookie, bool subscribe);
};

// Handlers whose subscriptions to the events of one object come and go, beside a list of these. What the handlers hear
// is written down beside what is due. The object must be gone before this is.
template <class Sender>
class Listeners
{
public:
    using Kinds = std::span<const EventKind<Sender>>;

    // What an event says beside its name, in the words that Expect is given. Called inside the event: it must not end
    // the trial.
    using Describe = std::function<std::string(const check::SeenEvent& event)>;

    Listeners(Kinds kinds, Describe describe) : kinds_(kinds), describe_(std::move(describe))
    {
        for (std::size_t handler = 0; handler < handlers_.size(); ++handler)
            handlers_[handler]->action = [this, handler](const check::SeenEvent& event) { Hear(handler, event); };
    }
    Listeners(const Listeners&) = delete;
    Listeners& operator=(const Listeners&) = delete;

    // From now on an object that nobody has subscribed to. Borrowed.
    void Watch(Sender& sender)
    {
        sender_ = &sender;
        subscriptions_.clear();
    }

    // The numbers choose an event and a handler. The same subscription may be made more than once.
    void Subscribe(std::uint32_t kind, std::uint32_t handler, std::uint64_t cookie)
    {
        if (subscriptions_.size() == MostSubscriptions)
            return;
        const Subscription subscription{kind % kinds_.size(), handler % handlers_.size(), cookie};
        Call(subscription.kind, handlers_[subscription.handler].Get(), cookie, true);
        subscriptions_.push_back(subscription);
    }

    // The oldest of its kind and handler goes, whatever the cookie; perhaps there is none.
    void Unsubscribe(std::uint32_t kind, std::uint32_t handler, std::uint64_t cookie)
    {
        const Subscription gone{kind % kinds_.size(), handler % handlers_.size(), cookie};
        Call(gone.kind, handlers_[gone.handler].Get(), cookie, false);
        const auto found = std::find_if(subscriptions_.begin(), subscriptions_.end(),
                                        [&](const Subscription& made)
                                        { return made.kind == gone.kind && made.handler == gone.handler; });
        if (found != subscriptions_.end())
            subscriptions_.erase(found);
    }

    // Null subscribes nobody.
    void SubscribeNull(std::uint32_t kind, std::uint64_t cookie) { Call(kind % kinds_.size(), nullptr, cookie, true); }

    // Null unsubscribes everybody from every event.
    void UnsubscribeNull(std::uint32_t kind, std::uint64_t cookie)
    {
        Call(kind % kinds_.size(), nullptr, cookie, false);
        subscriptions_.clear();
    }

    // The event is due, with these words, for all who subscribed to it, in the order in which they did.
    void Expect(const std::string& event, const std::string& words)
    {
        for (const auto& [kind, handler, cookie] : subscriptions_)
        {
            if (kinds_[kind].name == event)
                due_.push_back(Write(event, words, handler, cookie));
        }
    }

    void Compare(check::Trial& trial)
    {
        trial.Equal("the events since the last comparison", came_, due_);
        came_.clear();
        due_.clear();
        for (const auto& handler : handlers_)
            trial.Equal("the references on a handler, which is only borrowed,", handler->GetRefCount(), 1u);
    }

private:
    static constexpr std::size_t MostSubscriptions = 8;

    struct Subscription
    {
        std::size_t kind;
        std::size_t handler;
        std::uint64_t cookie;
    };

    void Call(std::size_t kind, IEventHandler* handler, std::uint64_t cookie, bool subscribe)
    {
        (sender_->*kinds_[kind].subscribe)(handler, cookie, subscribe);
    }

    void Hear(std::size_t handler, const check::SeenEvent& event)
    {
        const bool known = event.sender == static_cast<IObject*>(sender_) && event.interfaceId == Sender::Id;
        came_.push_back(
            Write(event.eventName, known ? describe_(event) : "of another sender", handler, event.userData));
        handlers_[handler]->events.clear();
    }

    static std::string Write(const std::string& event, const std::string& words, std::size_t handler,
                             std::uint64_t cookie)
    {
        return event + " " + words + " to handler " + std::to_string(handler) + " with " + std::to_string(cookie);
    }

    Kinds kinds_;
    Describe describe_;
    std::array<Ref<check::RecordingHandler>, 2> handlers_ = {MakeRef<check::RecordingHandler>(),
                                                             MakeRef<check::RecordingHandler>()};
    Sender* sender_ = nullptr;
    std::vector<Subscription> subscriptions_;
    std::vector<std::string> came_;
    std::vector<std::string> due_;
};

}  // namespace tvx::fuzz
