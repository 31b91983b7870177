// SPDX-License-Identifier: MIT
#include "Tool/Checks/SlotsOfObjects.h"

#include "Platform/ThreadId.h"
#include "Tool/Checks/Doubles.h"

namespace tvx::check
{

namespace
{

using QuerySlot = std::int32_t(void* object, const char* id, void** out);

void JudgeQuery(Trial& trial, IObjectBase& object, const std::string& what, QuerySlot* query)
{
    const auto face = TakeFromC<IObjectBase>(trial, what + ", asked for IObjectBase,", TVX_OK,
                                             [&](void** out) { return query(&object, IObjectBase::Id, out); });
    RoomyOut<void*> out;
    out.value = &object;
    trial.Gives(what + ", asked for an interface that does not exist,",
                query(&object, "com.example.INoSuchInterface/1.0", &out.value), TVX_E_NOINTERFACE);
    trial.Same("the out of the refused query by " + what, out.value, &object);
}

}  // namespace

void JudgeAddRef(Trial& trial, IObjectBase& object, const std::string& name)
{
    const auto first = CallIObjectBaseAddRef(&object);
    const auto second = CallIObjectBaseAddRef(&object);
    CallIObjectBaseRelease(&object);
    CallIObjectBaseRelease(&object);
    trial.Equal("the second answer of slot 1 (AddRef) of " + name + ", after " + Show(first) + ",", second, first + 1);
}

// The references to remove come from queries: so the check does not lean on slot 1.
void JudgeRelease(Trial& trial, IObjectBase& object, const std::string& name)
{
    for (int i = 0; i < 2; ++i)
    {
        const auto* const added = Query<IObjectBase>(&object).Detach();
        trial.Expect(added != nullptr, name + " to answer IObjectBase", "a refusal");
    }
    const auto first = CallIObjectBaseRelease(&object);
    const auto second = CallIObjectBaseRelease(&object);
    trial.Equal("the second answer of slot 2 (Release) of " + name + ", after " + Show(first) + ",", second, first - 1);
}

void JudgeQueryInterface(Trial& trial, IObjectBase& object, const std::string& name)
{
    JudgeQuery(trial, object, "slot 3 (QueryInterface) of " + name, CallIObjectBaseQueryInterface);
}

void JudgeDoQueryInterface(Trial& trial, IObjectBase& object, const std::string& name)
{
    JudgeQuery(trial, object, "slot 4 (DoQueryInterface) of " + name, CallIObjectBaseDoQueryInterface);
}

void JudgeIsUnique(Trial& trial, IObjectBase& object, const std::string& name)
{
    const Ref<IObjectBase> second(&object);
    trial.Equal("slot 5 (IsUnique) of " + name + ", held twice,", CallIObjectBaseIsUnique(&object), false);
}

void JudgeIsUniqueOfNew(Trial& trial, IObjectBase& object, const std::string& name)
{
    trial.Equal("slot 5 (IsUnique) of " + name, CallIObjectBaseIsUnique(&object), true);
    JudgeIsUnique(trial, object, name);
}

void JudgeGetRefCount(Trial& trial, IObjectBase& object, const std::string& name)
{
    const auto before = CallIObjectBaseGetRefCount(&object);
    const Ref<IObjectBase> second(&object);
    trial.Equal("slot 6 (GetRefCount) of " + name + " with one more reference than " + Show(before),
                CallIObjectBaseGetRefCount(&object), before + 1);
    trial.Equal("slot 6 (GetRefCount) of " + name + ", called again,", CallIObjectBaseGetRefCount(&object), before + 1);
}

void JudgeGetRefCountOfNew(Trial& trial, IObjectBase& object, const std::string& name)
{
    trial.Equal("slot 6 (GetRefCount) of " + name, CallIObjectBaseGetRefCount(&object), 1u);
    JudgeGetRefCount(trial, object, name);
}

void JudgeGetOwnerThreadId(Trial& trial, IObject& object, const std::string& name)
{
    trial.Equal("slot 9 (GetOwnerThreadId) of " + name, CallIObjectGetOwnerThreadId(&object),
                Platform::GetCurrentThreadId());
}

void JudgeSetOwnerThreadId(Trial& trial, IObject& object, const std::string& name)
{
    constexpr std::uint32_t otherThread = 0xFFFFFFFE;
    trial.Gives("slot 10 (SetOwnerThreadId) of " + name, CallIObjectSetOwnerThreadId(&object, otherThread), TVX_OK);
    trial.Equal("the owner thread of " + name + " after slot 10", object.GetOwnerThreadId(), otherThread);
}

void JudgeSubscribeDestroyed(Trial& trial, ObjectsToTheEnd objects, const std::function<void()>& end)
{
    constexpr std::uint64_t userData = 0xFEDCBA9876543210;
    std::vector<NamedObject<RecordingHandler>> handlers;
    for (const auto& object : objects)
    {
        handlers.push_back({object.name, MakeRef<RecordingHandler>()});
        CallIObjectSubscribeDestroyed(ToC<IObject>(object.object), ToC<IEventHandler>(handlers.back().object),
                                      userData);
    }
    objects.clear();
    end();
    for (const auto& handler : handlers)
    {
        const auto& events = handler.object->events;
        trial.Equal("the number of events at the end of " + handler.name + ", subscribed by slot 7,", events.size(),
                    1u);
        trial.Equal("the user data of slot 7 (SubscribeDestroyed) of " + handler.name, events[0].userData, userData);
    }
}

void JudgeUnsubscribeDestroyed(Trial& trial, ObjectsToTheEnd objects, const std::function<void()>& end)
{
    std::vector<NamedObject<RecordingHandler>> handlers;
    for (const auto& object : objects)
    {
        const auto handler = MakeRef<RecordingHandler>();
        object.object->SubscribeDestroyed(handler.Get(), 1);
        CallIObjectUnsubscribeDestroyed(ToC<IObject>(object.object), ToC<IEventHandler>(handler));
        handlers.push_back({object.name, handler});
    }
    objects.clear();
    end();
    for (const auto& handler : handlers)
        trial.Equal("the number of events at the end of " + handler.name + ", unsubscribed by slot 8,",
                    handler.object->events.size(), 0u);
}

}  // namespace tvx::check
