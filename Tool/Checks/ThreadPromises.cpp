// SPDX-License-Identifier: MIT
#include "Tool/Checks/ThreadPromises.h"

#include "Platform/ThreadId.h"
#include "Tool/Checks/ThreadCounts.h"
#include "Tool/Checks/ThreadDoubles.h"
#include "Tool/Checks/Threads.h"

namespace tvx::check
{

namespace
{

// What is wrong with an object that this thread has just made; null when nothing is.
const char* FindMistake(const ObjectClass& objectClass, const Specimen& specimen)
{
    if (!specimen.object)
        return "no object";
    if (!specimen.object->IsUnique())
        return "an object that is not unique";
    if (IsObjectClass(objectClass) && AsObject(specimen).GetOwnerThreadId() != Platform::GetCurrentThreadId())
        return "an object with the number of another thread";
    return nullptr;
}

std::vector<Specimen> MakeMany(Trial& trial, const ObjectClass& objectClass, int count)
{
    std::vector<Specimen> specimens;
    for (int made = 0; made < count; ++made)
        specimens.push_back(MakeSpecimen(trial, objectClass));
    return specimens;
}

void ExpectMadeOnManyThreads(Trial& trial, const ObjectClass& objectClass)
{
    const auto exported = trial.GetExport(objectClass.exportId);
    const auto count = exported->GetRefCount();
    std::atomic<const char*> mistake = nullptr;
    RunTogether(
        [&](int)
        {
            for (int round = 0; round < 100; ++round)
            {
                if (const char* const found = FindMistake(objectClass, objectClass.make(exported)))
                    mistake = found;
            }
        });
    trial.Expect(mistake == nullptr,
                 std::string("four threads to make each time ") + objectClass.name +
                     " of their own, with one reference",
                 mistake == nullptr ? "" : mistake.load());
    trial.Equal(std::string("the count of what makes ") + objectClass.name, exported->GetRefCount(), count);
}

void ExpectEndElsewhere(Trial& trial, const ObjectClass& objectClass)
{
    const auto what = std::string("\"Destroyed\" of ") + objectClass.name + " that another thread releases";
    const auto handler = MakeRef<CountingHandler>();
    auto specimen = MakeSpecimen(trial, objectClass);
    AsObject(specimen).SubscribeDestroyed(handler.Get(), 0);
    int events = 0;
    std::thread::id there;
    RunElsewhere(
        [&]
        {
            specimen.object = nullptr;
            events = handler->events;
            there = std::this_thread::get_id();
        });
    trial.Equal("the number of events " + what, events, 1);
    trial.Expect(handler->lastThread == there, what + " to fire on that thread", "another thread");
}

void ExpectOneEnd(Trial& trial, const ObjectClass& objectClass)
{
    constexpr int objectCount = 200;
    const auto handler = MakeRef<CountingHandler>();
    std::vector<std::vector<Ref<IObjectBase>>> held(ThreadCount);
    for (auto& specimen : MakeMany(trial, objectClass, objectCount))
    {
        AsObject(specimen).SubscribeDestroyed(handler.Get(), 0);
        for (auto& holder : held)
            holder.push_back(specimen.object);
    }
    trial.Equal(std::string("the ends of objects that are held, each ") + objectClass.name, handler->events.load(), 0);
    RunTogether(
        [&](int number)
        {
            for (auto& object : held[static_cast<std::size_t>(number)])
                object = nullptr;
        });
    trial.Equal(std::string("the ends of 200 objects, each ") + objectClass.name, handler->events.load(), objectCount);
}

void ExpectLockedSubscriptions(Trial& trial, const ObjectClass& objectClass)
{
    const std::string name = objectClass.name;
    const auto handler = MakeRef<CountingHandler>();
    auto specimen = MakeSpecimen(trial, objectClass);
    RunTogether(
        [&](int)
        {
            auto& object = AsObject(specimen);
            for (int round = 0; round < 500; ++round)
            {
                object.SubscribeDestroyed(handler.Get(), 0);
                object.SubscribeDestroyed(handler.Get(), 0);
                object.UnsubscribeDestroyed(handler.Get());
                object.UnsubscribeDestroyed(handler.Get());
            }
            object.SubscribeDestroyed(handler.Get(), 0);
        });
    trial.Equal("the count of " + name + " that many threads subscribed to", specimen.object->GetRefCount(), 1u);
    specimen.object = nullptr;
    trial.Equal("the number of events \"Destroyed\" of " + name + " with one subscription for each thread",
                handler->events.load(), ThreadCount);
}

// Tries it with each class that has events.
void ForEachObjectClass(Trial& trial, const Offer& offer, void (*expect)(Trial&, const ObjectClass&))
{
    for (const auto* const objectClass : offer.made)
    {
        if (IsObjectClass(*objectClass))
            expect(trial, *objectClass);
    }
}

}  // namespace

void ExpectExactCounts(Trial& trial, const Offer& offer)
{
    for (const auto* const objectClass : offer.made)
    {
        const auto specimen = MakeSpecimen(trial, *objectClass);
        ExpectExactCount(trial, objectClass->name, *specimen.object, specimen.object.Get(),
                         std::chrono::milliseconds(30) / offer.made.size(), [&] { return specimen.object; });
    }
}

void ExpectMadeOnManyThreads(Trial& trial, const Offer& offer)
{
    for (const auto* const objectClass : offer.made)
        ExpectMadeOnManyThreads(trial, *objectClass);
}

void ExpectEndElsewhere(Trial& trial, const Offer& offer)
{
    ForEachObjectClass(trial, offer, ExpectEndElsewhere);
}

void ExpectOneEnd(Trial& trial, const Offer& offer)
{
    ForEachObjectClass(trial, offer, ExpectOneEnd);
}

void ExpectLockedSubscriptions(Trial& trial, const Offer& offer)
{
    ForEachObjectClass(trial, offer, ExpectLockedSubscriptions);
}

}  // namespace tvx::check
