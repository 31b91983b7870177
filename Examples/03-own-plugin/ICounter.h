// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ISimpleMap.h"

namespace counting
{

// Counts words. After each it fires "Counted" of this interface, whose param is 0.
class ICounter : public tvx::IObject
{
public:
    static constexpr const char Id[] = "com.example.counting.ICounter/1.0";

    // Slot 11. Adds one to the tally of word, logs that and fires "Counted".
    //   word  borrowed
    // Threads: one at a time. Fails: -4 when word is null, with a report, or memory is exhausted, without one.
    virtual tvx::Result Count(const char* word) = 0;

    // Slot 12. Makes a settings map of the tallies as they are now, a number under each word.
    //   out  receives one reference, owned by the caller
    // Threads: one at a time. Fails: as the map's Clone.
    virtual tvx::Result GetTallies(tvx::ISimpleMap** out) = 0;

    // Slot 13. Subscribes handler to "Counted", or unsubscribes it.
    //   handler  borrowed, kept without a reference; null is ignored, or unsubscribes everybody
    //   cookie   passed back with the event
    //   connect  true subscribes, false unsubscribes
    // Threads: any. Fails: never; without memory nothing is subscribed.
    virtual void SubscribeCounted(tvx::IEventHandler* handler, std::uint64_t cookie, bool connect) = 0;

protected:
    ~ICounter() = default;
};

}  // namespace counting
