// SPDX-License-Identifier: MIT
#include "Tests/Abi/AbiTest.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

namespace tvx::test
{

TEST(ObjectBaseSlots, CountReferences)
{
    const auto object = MakeRef<BareObject>();
    void* const c = ToC<IObjectBase>(object);
    EXPECT_EQ(CallIObjectBaseAddRef(c), 2u);
    EXPECT_EQ(CallIObjectBaseGetRefCount(c), 2u);
    EXPECT_FALSE(CallIObjectBaseIsUnique(c));
    EXPECT_EQ(CallIObjectBaseRelease(c), 1u);
    EXPECT_TRUE(CallIObjectBaseIsUnique(c));
}

TEST(ObjectBaseSlots, DestroyWithTheLastReference)
{
    bool died = false;
    void* const c = static_cast<IObject*>(MakeRef<ProbeObject>(&died).Detach());
    EXPECT_EQ(CallIObjectBaseRelease(c), 0u);
    EXPECT_TRUE(died);
}

TEST(ObjectBaseSlots, AnswerQueries)
{
    const auto object = MakeRef<BareObject>();
    void* const c = ToC<IObjectBase>(object);
    const auto first = FromC<IObjectBase>(
        [&](void** out) { EXPECT_EQ(CallIObjectBaseQueryInterface(c, IObjectBase::Id, out), TVX_OK); });
    const auto second = FromC<IObjectBase>(
        [&](void** out) { EXPECT_EQ(CallIObjectBaseDoQueryInterface(c, IObjectBase::Id, out), TVX_OK); });
    EXPECT_EQ(first.Get(), object.Get());
    EXPECT_EQ(second.Get(), object.Get());
    EXPECT_EQ(object->GetRefCount(), 3u);
    EXPECT_EQ(CallIObjectBaseQueryInterface(c, IObject::Id, nullptr), TVX_E_NOINTERFACE);
    EXPECT_EQ(CallIObjectBaseDoQueryInterface(c, IObject::Id, nullptr), TVX_E_NOINTERFACE);
}

// Slots 3 and 4 do the same for every class of the module: only an object of another make tells them apart.
TEST(ObjectBaseSlots, KeepThePublicQueryApartFromTheClassesOwn)
{
    class Recorder final : public IObjectBase
    {
    public:
        std::uint32_t AddRef() override { return 101; }
        std::uint32_t Release() override { return 102; }
        Result QueryInterface(const char*, void**) override { return 103; }
        Result DoQueryInterface(const char*, void**) override { return 104; }
        bool IsUnique() override { return true; }
        std::uint32_t GetRefCount() override { return 106; }
    };
    Recorder recorder;
    EXPECT_EQ(CallIObjectBaseAddRef(&recorder), 101u);
    EXPECT_EQ(CallIObjectBaseRelease(&recorder), 102u);
    EXPECT_EQ(CallIObjectBaseQueryInterface(&recorder, "", nullptr), 103);
    EXPECT_EQ(CallIObjectBaseDoQueryInterface(&recorder, "", nullptr), 104);
    EXPECT_TRUE(CallIObjectBaseIsUnique(&recorder));
    EXPECT_EQ(CallIObjectBaseGetRefCount(&recorder), 106u);
}

TEST(ObjectSlots, SubscribeAndUnsubscribeDestroyed)
{
    auto object = MakeRef<ProbeObject>();
    const auto told = MakeRef<RecordingHandler>();
    const auto untold = MakeRef<RecordingHandler>();
    void* const c = ToC<IObject>(object);
    CallIObjectSubscribeDestroyed(c, ToC<IEventHandler>(told), 0xFEDCBA9876543210);
    CallIObjectSubscribeDestroyed(c, ToC<IEventHandler>(untold), 1);
    CallIObjectUnsubscribeDestroyed(c, ToC<IEventHandler>(untold));
    object = nullptr;
    ASSERT_EQ(told->events.size(), 1u);
    EXPECT_EQ(told->events.front().userData, 0xFEDCBA9876543210);
    EXPECT_TRUE(untold->events.empty());
}

TEST(ObjectSlots, ReadAndReplaceTheOwnerThread)
{
    const auto object = MakeRef<ProbeObject>();
    void* const c = ToC<IObject>(object);
    EXPECT_EQ(CallIObjectGetOwnerThreadId(c), object->GetOwnerThreadId());
    EXPECT_EQ(CallIObjectSetOwnerThreadId(c, 0xFFFFFFFE), TVX_OK);
    EXPECT_EQ(CallIObjectGetOwnerThreadId(c), 0xFFFFFFFE);
}

TEST(EventHandlerSlots, ReceiveAnEventWithAllItsArguments)
{
    const auto sender = MakeRef<ProbeObject>();
    const auto handler = MakeRef<RecordingHandler>();
    EXPECT_EQ(CallIEventHandlerOnEvent(ToC<IEventHandler>(handler), ToC<IObject>(sender), "interface", "event",
                                       0xFFFFFFFF00000001, 0x8000000000000002),
              TVX_OK);
    ASSERT_EQ(handler->events.size(), 1u);
    const auto& event = handler->events.front();
    EXPECT_EQ(event.sender, ToC<IObject>(sender));
    EXPECT_EQ(event.interfaceId, "interface");
    EXPECT_EQ(event.eventName, "event");
    EXPECT_EQ(event.param, 0xFFFFFFFF00000001);
    EXPECT_EQ(event.userData, 0x8000000000000002);
}

}  // namespace tvx::test
