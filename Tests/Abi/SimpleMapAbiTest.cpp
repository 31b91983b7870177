// SPDX-License-Identifier: MIT
#include "Src/SimpleMap.h"
#include "Src/SimpleMapFactory.h"
#include "Src/Variant.h"
#include "Tests/Abi/AbiTest.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

namespace tvx::test
{

namespace
{

// Every version of the interface is the same table at the same address, so that one test of the numbers serves all.
class SimpleMapSlots : public testing::Test
{
protected:
    // The text under key, or "absent".
    std::string GetText(const char* key)
    {
        const auto text = FromC<IString>([&](void** out) { CallISimpleMapGetString(c, key, out); });
        return text ? text->GetText() : "absent";
    }

    Ref<SimpleMap> map = MakeRef<SimpleMap>();
    void* c = ToC<ISimpleMap>(map);
};

}  // namespace

TEST_F(SimpleMapSlots, AreTheSameForEveryVersion)
{
    for (const char* const id :
         {ISimpleMap::Id, ISimpleMap1::Id, ISimpleMap2::Id, ISimpleMap3::Id, ISimpleMap4::Id, ISimpleMap5::Id})
    {
        const auto face =
            FromC<ISimpleMap>([&](void** out) { EXPECT_EQ(CallIObjectBaseQueryInterface(c, id, out), TVX_OK); });
        EXPECT_EQ(face.Get(), c);
    }
}

TEST_F(SimpleMapSlots, WriteValues)
{
    EXPECT_EQ(CallISimpleMapSetDouble(c, "double", 0.5), TVX_OK);
    EXPECT_EQ(CallISimpleMapSetInt(c, "int", -12), TVX_OK);
    EXPECT_EQ(CallISimpleMapSetString(c, "string", "text"), TVX_OK);
    EXPECT_EQ(GetText("double"), "0.5");
    EXPECT_EQ(GetText("int"), "-12");
    EXPECT_EQ(GetText("string"), "text");
    EXPECT_EQ(GetText("none"), "absent");
}

TEST_F(SimpleMapSlots, ReadValues)
{
    map->SetString("number", "7.5");
    double real = 0.0;
    std::int32_t integer = 0;
    bool has = false;
    EXPECT_EQ(CallISimpleMapGetDouble(c, "number", &real), TVX_OK);
    EXPECT_EQ(CallISimpleMapGetInt(c, "number", &integer), TVX_OK);
    EXPECT_EQ(CallISimpleMapHasKey(c, "number", &has), TVX_OK);
    EXPECT_EQ(real, 7.5);
    EXPECT_EQ(integer, 7);
    EXPECT_TRUE(has);
}

TEST_F(SimpleMapSlots, ReadAndWriteSubMaps)
{
    map->SetString("A\\B", "below");
    const auto below =
        FromC<ISimpleMap>([&](void** out) { EXPECT_EQ(CallISimpleMapGetSubMap(c, "A", out), TVX_S_VALUE); });
    EXPECT_EQ(CallISimpleMapSetSubMap(c, "X\\Y", ToC<ISimpleMap>(below)), TVX_OK);
    EXPECT_EQ(GetText("X\\Y\\B"), "below");
}

TEST_F(SimpleMapSlots, MakeClonesAndIterators)
{
    map->SetString("A", "1");
    map->SetString("A\\B", "2");
    map->SetString("C", "3");
    const auto clone = FromC<ISimpleMap>([&](void** out) { EXPECT_EQ(CallISimpleMapClone(c, out), TVX_OK); });
    EXPECT_NE(clone.Get(), c);
    const auto all =
        FromC<ISimpleMapIterator>([&](void** out) { EXPECT_EQ(CallISimpleMapGetIterator(c, out), TVX_OK); });
    const auto some =
        FromC<ISimpleMapIterator>([&](void** out) { EXPECT_EQ(CallISimpleMapGetIteratorNoSubMaps(c, out), TVX_OK); });
    all->Next();
    some->Next();
    EXPECT_STREQ(all->GetKey(), "A\\B");
    EXPECT_STREQ(some->GetKey(), "C");
}

// Without an object in it or a serializer to be had the two say different things.
TEST_F(SimpleMapSlots, ReadAndWriteObjects)
{
    const auto object = MakeRef<ProbeObject>();
    void* out = nullptr;
    const auto written =
        CaptureOutput([&] { EXPECT_EQ(CallISimpleMapSetObject(c, "key", ToC<IObject>(object)), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(written, "TVX_RETURN_FAIL_IF_NULL", "Src/SimpleMap.cpp"));
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(CallISimpleMapGetObject(c, "key", &out), TVX_S_NOKEY); }), "");
}

TEST_F(SimpleMapSlots, SwitchBatchMode)
{
    bool mode = false;
    EXPECT_EQ(CallISimpleMapGetBatchUpdatingMode(c, &mode), TVX_OK);
    EXPECT_TRUE(mode);
    EXPECT_EQ(CallISimpleMapSetBatchUpdatingMode(c, false), TVX_OK);
    EXPECT_EQ(CallISimpleMapGetBatchUpdatingMode(c, &mode), TVX_OK);
    EXPECT_FALSE(mode);
}

TEST_F(SimpleMapSlots, SubscribeToEvents)
{
    const auto handler = MakeRef<RecordingHandler>();
    map->SetBatchUpdatingMode(false);
    CallISimpleMapSubscribeChanged(c, ToC<IEventHandler>(handler), 0xFEDCBA9876543210, true);
    CallISimpleMapSubscribeBatchUpdatingModeChanged(c, ToC<IEventHandler>(handler), 2, true);
    map->SetString("key", "value");
    map->SetBatchUpdatingMode(true);
    EXPECT_EQ(handler->GetNames(), (std::vector<std::string>{"Changed", "BatchUpdatingModeChanged"}));
    EXPECT_EQ(handler->events.front().userData, 0xFEDCBA9876543210);
    CallISimpleMapSubscribeBatchUpdatingModeChanged(c, ToC<IEventHandler>(handler), 2, false);
    map->SetBatchUpdatingMode(false);
    CallISimpleMapSubscribeChanged(c, ToC<IEventHandler>(handler), 0, false);
    map->SetString("key", "value");
    EXPECT_EQ(handler->events.size(), 2u);
}

TEST_F(SimpleMapSlots, FireBehindTheInterface)
{
    const auto handler = MakeRef<RecordingHandler>();
    const auto argument = MakeRef<BoolVariant>(true);
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    CallSimpleMapFireChanged(c, ToC<IObjectBase>(MakeRef<BareObject>()));
    CallSimpleMapFireChanged(c, nullptr);
    CallSimpleMapFireBatchUpdatingModeChanged(c, ToC<IVariant>(argument));
    EXPECT_EQ(handler->GetNames(), (std::vector<std::string>{"Changed", "Changed", "BatchUpdatingModeChanged"}));
    EXPECT_NE(handler->events[0].param, 0u);
    EXPECT_EQ(handler->events[1].param, 0u);
    EXPECT_EQ(handler->events[2].param, reinterpret_cast<std::uintptr_t>(ToC<IVariant>(argument)));
    EXPECT_EQ(handler->events[2].sender, c);
}

TEST_F(SimpleMapSlots, WalkEntries)
{
    map->SetString("key", "value");
    Ref<ISimpleMapIterator> iterator;
    map->GetIterator(iterator.Receive());
    void* const walk = ToC<ISimpleMapIterator>(iterator);
    bool end = true;
    EXPECT_STREQ(CallISimpleMapIteratorGetKey(walk), "key");
    EXPECT_STREQ(CallISimpleMapIteratorGetValue(walk), "value");
    EXPECT_EQ(CallISimpleMapIteratorIsEnd(walk, &end), TVX_OK);
    EXPECT_FALSE(end);
    EXPECT_EQ(CallISimpleMapIteratorNext(walk), TVX_E_FAIL);
    EXPECT_EQ(CallISimpleMapIteratorIsEnd(walk, &end), TVX_OK);
    EXPECT_TRUE(end);
}

TEST(FactorySlots, MakeObjects)
{
    const auto factory = MakeRef<CSimpleMapFactory>();
    const auto made =
        FromC<IObjectBase>([&](void** out) { EXPECT_EQ(CallIFactoryCreate(ToC<IFactory>(factory), out), TVX_OK); });
    EXPECT_TRUE(Query<ISimpleMap>(made));
}

TEST(UserDataSlots, AttachFindAndClear)
{
    const auto map = MakeRef<SimpleMap>();
    const auto object = MakeRef<BareObject>();
    void* const c = ToC<IUserDataContainer>(map);
    EXPECT_EQ(CallIUserDataContainerSetUserData(c, "name", ToC<IObjectBase>(object)), TVX_OK);
    for (const auto get : {&CallIUserDataContainerGetUserData, &CallIUserDataContainerGetConstUserData})
    {
        const auto found = FromC<IObjectBase>([&](void** out) { EXPECT_EQ(get(c, "name", out), TVX_S_VALUE); });
        EXPECT_EQ(found.Get(), object.Get());
    }
    EXPECT_EQ(CallIUserDataContainerClearUserData(c), TVX_OK);
    EXPECT_TRUE(object->IsUnique());
}

TEST(UserDataSlots, MakeIteratorsThroughAnOutAndThroughAHolder)
{
    const auto map = MakeRef<SimpleMap>();
    const auto object = MakeRef<BareObject>();
    void* const c = ToC<IUserDataContainer>(map);
    map->SetUserData("name", object.Get());
    const auto made = FromC<IUserDataIterator>(
        [&](void** out) { EXPECT_EQ(CallIUserDataContainerCreateUserDataIterator(c, out), TVX_OK); });
    const auto held =
        FromC<IUserDataIterator>([&](void** holder) { CallIUserDataContainerGetUserDataIterator(holder, c); });
    for (const auto& iterator : {made, held})
    {
        ASSERT_TRUE(iterator);
        EXPECT_STREQ(iterator->GetKey(), "name");
    }
    EXPECT_TRUE(map->IsUnique());
}

TEST(UserDataSlots, WalkEntries)
{
    const auto map = MakeRef<SimpleMap>();
    const auto object = MakeRef<BareObject>();
    map->SetUserData("name", object.Get());
    const auto iterator = map->GetUserDataIterator();
    void* const c = ToC<IUserDataIterator>(iterator);
    EXPECT_FALSE(CallIUserDataIteratorIsEnd(c));
    EXPECT_STREQ(CallIUserDataIteratorGetKey(c), "name");
    EXPECT_EQ(FromC<IObjectBase>([&](void** out) { CallIUserDataIteratorGetObject(c, out); }).Get(), object.Get());
    EXPECT_EQ(CallIUserDataIteratorNext(c), TVX_OK);
    EXPECT_TRUE(CallIUserDataIteratorIsEnd(c));
}

}  // namespace tvx::test
