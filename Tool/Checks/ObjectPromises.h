// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/ObjectClasses.h"

// What holds for the objects of every class, and the checks of it for the exports and what they make.
namespace tvx::check
{

void ExpectAnswers(Trial& trial, const ObjectClass& objectClass);
void ExpectNearMissesRefused(Trial& trial, const Offer& offer);
void ExpectSharedExport(Trial& trial, const Offer& offer);
void ExpectOneReference(Trial& trial, const Offer& offer);
void ExpectCounting(Trial& trial, const Offer& offer);
void ExpectNewObjects(Trial& trial, const Offer& offer);
void ExpectNewFormatTexts(Trial& trial, const Offer& offer);
void ExpectOwnerThread(Trial& trial, const Offer& offer);
void ExpectEndTold(Trial& trial, const Offer& offer);
void ExpectEndToldToEachSubscription(Trial& trial, const Offer& offer);

// The rows of these checks; the names are those of the class or the export.

template <const ObjectClass& Class>
constexpr Check AnswersItsList(const char* name, const char* rule)
{
    return {name, "An object of the class is asked for every known identifier through each of its faces.", rule,
            [](Trial& trial) { ExpectAnswers(trial, Class); }};
}

template <const Offer& Offered>
constexpr Check RefuseNearMisses(const char* name)
{
    return {name, "New objects are asked for texts that are almost an identifier, and with a null out.",
            "An identifier is compared byte for byte, including its NUL: whatever differs gives -3, as does a null "
            "out, and changes neither the out nor the count.",
            [](Trial& trial) { ExpectNearMissesRefused(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check IsSharedByModuleAndAsker(const char* name)
{
    return {name, "The count of the export is read when it has one asker.",
            "The module holds one reference on what it exports, and the asker the other one.",
            [](Trial& trial) { ExpectSharedExport(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check AreMadeWithOneReference(const char* name)
{
    return {name, "The counts of new objects are read.",
            "A new object carries exactly one reference, its maker's caller owns that, and IsUnique says so.",
            [](Trial& trial) { ExpectOneReference(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check CountTheirReferences(const char* name)
{
    return {name, "References on new objects are added and dropped through each face, by the slots' numbers.",
            "AddRef and Release give the new count, each face tells the same one, and only 1 is unique.",
            [](Trial& trial) { ExpectCounting(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check AreNewEachTime(const char* name)
{
    return {name, "Two objects of each class are made in the same way and compared.",
            "What makes objects makes another one each time, so that nobody shares one without knowing.",
            [](Trial& trial) { ExpectNewObjects(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check GiveNewFormatTexts(const char* name)
{
    return {name, "The format identifier is asked for twice, of the export and of each object that writes itself.",
            "Every text that is handed out is a new string with one reference, and both sides name the same format.",
            [](Trial& trial) { ExpectNewFormatTexts(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check BelongToTheirThread(const char* name)
{
    return {name, "Objects are made on two threads, and their owner threads are read and replaced.",
            "An object records the system's number of the thread that constructed it, until SetOwnerThreadId, which "
            "gives 0, puts another number in its place.",
            [](Trial& trial) { ExpectOwnerThread(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check TellTheirEnd(const char* name)
{
    return {name, "A handler of \"Destroyed\" is subscribed, and the references are dropped one by one.",
            "The last Release destroys the object and fires \"Destroyed\" of IObject/1.0 once, with param 0 and the "
            "value given when subscribing; no release before does.",
            [](Trial& trial) { ExpectEndTold(trial, Offered); }};
}

template <const Offer& Offered>
constexpr Check TellTheirEndToEachSubscription(const char* name)
{
    return {name, "A handler of \"Destroyed\" is subscribed twice, and unsubscribed once or by a null handler.",
            "Two subscriptions are two calls; unsubscribing a handler ends its oldest subscription, and unsubscribing "
            "null ends all of them.",
            [](Trial& trial) { ExpectEndToldToEachSubscription(trial, Offered); }};
}

}  // namespace tvx::check
