// SPDX-License-Identifier: MIT
#include "Platform/ThreadId.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/ObjectPromises.h"
#include "Tool/Checks/Threads.h"

#include <functional>

// How objects of every class begin and end: their thread and their last event.
namespace tvx::check
{

namespace
{

constexpr std::uint64_t UserData = 0xFEDCBA9876543210;  // all 64 bits matter

// Runs work(class) with each class that has the operations of IObject.
template <class Work>
void ForEachObjectClass(const Offer& offer, Work&& work)
{
    for (const auto* const objectClass : offer.made)
    {
        if (IsObjectClass(*objectClass))
            work(*objectClass);
    }
}

// The faces with the operations of IObject; the primary one is among them.
std::vector<Ref<IObjectBase>> HoldObjectFaces(Trial& trial, const ObjectClass& objectClass, const Specimen& specimen)
{
    const auto listed = GetListedFaces(objectClass);
    const auto faces = HoldFaces(trial, objectClass, specimen);
    std::vector<Ref<IObjectBase>> objectFaces;
    for (std::size_t i = 0; i < faces.size(); ++i)
    {
        if (IsObjectFace(listed[i]))
            objectFaces.push_back(faces[i]);
    }
    return objectFaces;
}

// The owner thread is the same number through all faces, whichever replaced it.
void ExpectOwnerThread(Trial& trial, const ObjectClass& objectClass, const Specimen& specimen, std::uint32_t maker)
{
    const std::string name = objectClass.name;
    auto expected = maker;
    for (const auto& face : HoldObjectFaces(trial, objectClass, specimen))
    {
        auto& object = static_cast<IObject&>(*face);
        trial.Equal("GetOwnerThreadId of " + name, object.GetOwnerThreadId(), expected);
        expected += 1000000000u;
        trial.Gives("SetOwnerThreadId of " + name, object.SetOwnerThreadId(expected), TVX_OK);
        trial.Equal("GetOwnerThreadId of " + name + " after SetOwnerThreadId", object.GetOwnerThreadId(), expected);
    }
    AsObject(specimen).SetOwnerThreadId(maker);
}

// Subscribes the handler twice through the primary face, unsubscribes through the last one, and gives how often the end
// of the object was told.
std::size_t CountEnds(Trial& trial, const ObjectClass& objectClass, RecordingHandler& handler,
                      const std::function<void(IObject& object)>& unsubscribe)
{
    auto specimen = MakeSpecimen(trial, objectClass);
    handler.events.clear();
    AsObject(specimen).SubscribeDestroyed(&handler, 1);
    AsObject(specimen).SubscribeDestroyed(&handler, 2);
    unsubscribe(static_cast<IObject&>(*HoldObjectFaces(trial, objectClass, specimen).back()));
    specimen.object = nullptr;
    return handler.events.size();
}

void ExpectEndTold(Trial& trial, const ObjectClass& objectClass)
{
    const std::string name = objectClass.name;
    const auto handler = MakeRef<RecordingHandler>();
    auto specimen = MakeSpecimen(trial, objectClass);
    AsObject(specimen).SubscribeDestroyed(handler.Get(), UserData);
    trial.Equal("the count of the handler that " + name + " was given", handler->GetRefCount(), 1u);
    auto second = specimen.object;
    specimen.object = nullptr;
    trial.Equal("the events of " + name + " that is still held", handler->GetNames(), std::vector<std::string>{});
    second = nullptr;
    trial.Equal("the events of " + name + " that was released", handler->GetNames(),
                std::vector<std::string>{"Destroyed"});
    const auto& event = handler->events.front();
    trial.Equal("the interface of \"Destroyed\"", event.interfaceId, "com.talvere.general.tvx.IObject/1.0");
    trial.Equal("the param of \"Destroyed\"", event.param, std::uint64_t{0});
    trial.Equal("the user data of \"Destroyed\"", event.userData, UserData);
    trial.Expect(event.sender != nullptr, "the sender of \"Destroyed\" to tell objects apart", "null");
}

}  // namespace

void ExpectOwnerThread(Trial& trial, const Offer& offer)
{
    const auto here = Platform::GetCurrentThreadId();
    ExpectOwnerThread(trial, offer.exported, MakeSpecimen(trial, offer.exported), here);
    const auto exported = trial.GetExport(offer.exported.exportId);
    ForEachObjectClass(offer,
                       [&](const ObjectClass& objectClass)
                       {
                           ExpectOwnerThread(trial, objectClass, MakeSpecimen(trial, objectClass), here);
                           Specimen elsewhere;
                           auto there = here;
                           RunElsewhere(
                               [&]
                               {
                                   there = Platform::GetCurrentThreadId();
                                   elsewhere = objectClass.make(exported);
                               });
                           trial.Expect(static_cast<bool>(elsewhere.object),
                                        std::string(objectClass.name) + " to be made on another thread", "none");
                           ExpectOwnerThread(trial, objectClass, elsewhere, there);
                       });
}

void ExpectEndTold(Trial& trial, const Offer& offer)
{
    ForEachObjectClass(offer, [&](const ObjectClass& objectClass) { ExpectEndTold(trial, objectClass); });
}

void ExpectEndToldToEachSubscription(Trial& trial, const Offer& offer)
{
    const auto handler = MakeRef<RecordingHandler>();
    ForEachObjectClass(
        offer,
        [&](const ObjectClass& objectClass)
        {
            const auto count = [&](const std::function<void(IObject&)>& unsubscribe)
            { return CountEnds(trial, objectClass, *handler, unsubscribe); };
            const auto ends =
                std::string("the calls of \"Destroyed\" of ") + objectClass.name + " to a handler that was ";
            trial.Equal(ends + "subscribed twice", count([](IObject&) {}), std::size_t{2});
            trial.Equal(ends + "unsubscribed once of two",
                        count([&](IObject& object) { object.UnsubscribeDestroyed(handler.Get()); }), std::size_t{1});
            trial.Equal("the user data of the younger subscription, which is left,", handler->events.front().userData,
                        std::uint64_t{2});
            trial.Equal(ends + "unsubscribed with all others",
                        count([](IObject& object) { object.UnsubscribeDestroyed(nullptr); }), std::size_t{0});
        });
}

}  // namespace tvx::check
