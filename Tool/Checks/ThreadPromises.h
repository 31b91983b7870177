// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/ObjectClasses.h"

// What holds for the objects of every class when several threads have to do with them, and the checks of it.
namespace tvx::check
{

void ExpectExactCounts(Trial& trial, const Offer& offer);
void ExpectMadeOnManyThreads(Trial& trial, const Offer& offer);
void ExpectEndElsewhere(Trial& trial, const Offer& offer);
void ExpectOneEnd(Trial& trial, const Offer& offer);
void ExpectLockedSubscriptions(Trial& trial, const Offer& offer);

// The rows of these checks; the names are those of the export.

template <const Offer& Offered>
constexpr Check CountExactly(const char* name)
{
    return {name, "Four threads add references on a new object of each class, hold them together, and drop them.",
            "AddRef and Release may be called on any thread at any time: no reference is lost, none stays.",
            [](Trial& trial) { ExpectExactCounts(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check AreMadeOnManyThreads(const char* name)
{
    return {name, "Four threads make and release objects at once, all by the one export.",
            "What makes objects may be called on any thread; each gets objects of its own, with one reference and its "
            "own thread's number.",
            [](Trial& trial) { ExpectMadeOnManyThreads(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check MayEndOnAnotherThread(const char* name)
{
    return {name, "Objects are made on one thread and released on another.",
            "The last reference may be released on any thread; \"Destroyed\" reaches its handlers there, before "
            "Release returns.",
            [](Trial& trial) { ExpectEndElsewhere(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check EndOnce(const char* name)
{
    return {name, "Four threads release the last references on many objects at once.",
            "Exactly one of the threads destroys the object, whichever is the last: \"Destroyed\" comes once for each.",
            [](Trial& trial) { ExpectOneEnd(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check LockTheirSubscriptions(const char* name)
{
    return {name, "Four threads subscribe to \"Destroyed\" of one object and unsubscribe again, all but once.",
            "The list of subscriptions has a lock: none is lost, and none comes back.",
            [](Trial& trial) { ExpectLockedSubscriptions(trial, Offered); }};
}

}  // namespace tvx::check
