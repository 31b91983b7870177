// SPDX-License-Identifier: MIT
#include "Host/TracedFace.h"

#include "Interfaces/ISerializable.h"
#include "Interfaces/IUserDataContainer.h"
#include "Tests/Host/LifeTracerFixture.h"
#include "Tests/Support/Doubles.h"

#include <gmock/gmock.h>

namespace tvx::host
{
namespace
{

using test::TracedLives;
using testing::IsEmpty;

TEST_F(TracedLives, GivesTheSameFaceForTheSameInterface)
{
    EXPECT_EQ(manager->GetExport(test::MapExport)->Get(), manager->GetExport(test::MapExport)->Get());
    const auto map = MakeMap();
    EXPECT_EQ(static_cast<IObjectBase*>(Query<IObjectBase>(map).Get()), map.Get());
    EXPECT_EQ(static_cast<ISimpleMap*>(Query<ISimpleMap5>(map).Get()), map.Get());
    const auto serializable = Query<ISerializable>(map);
    EXPECT_NE(static_cast<void*>(serializable.Get()), map.Get());
    EXPECT_EQ(Query<ISerializable>(map).Get(), serializable.Get());
    EXPECT_EQ(Query<ISimpleMap>(serializable).Get(), map.Get());
}

TEST_F(TracedLives, CountsAllInterfacesOfAnObjectAsOne)
{
    const auto map = MakeMap();
    const auto serializable = Query<ISerializable>(map);
    const auto userData = Query<IUserDataContainer>(serializable);
    ASSERT_EQ(tracer.GetHeld().size(), 1U);
    EXPECT_EQ(tracer.GetHeld()[0].references, 3U);
    EXPECT_EQ(map->GetRefCount(), 3U);
}

TEST_F(TracedLives, KeepsTheIdentityOfItems)
{
    const auto collection = MakeCollection();
    auto item = MakeMap();
    const auto probe = MakeRef<test::ProbeObject>();
    collection->Add(item.Get());
    collection->Add(probe.Get());
    const auto* const face = item.Get();
    item = nullptr;
    Ref<IObject> out;
    collection->GetItem(0, out.Receive());
    EXPECT_EQ(out.Get(), face);
    collection->GetItem(1, out.Receive());
    EXPECT_EQ(out.Get(), probe.Get());  // the program's own object
    EXPECT_EQ(probe->GetRefCount(), 3U);
}

TEST_F(TracedLives, GivesModulesTheirOwnObjects)
{
    const auto factory = *manager->GetExportAs<IImageFactory>(test::ImageExport);
    Ref<IImage> image;
    factory->Create(1, 1, 0, 0, 0, image.Receive());
    Ref<IConstImage> fixed;
    EXPECT_EQ(factory->MakeConst(image.Get(), fixed.Receive()), TVX_OK);  // refuses images of another make
    EXPECT_NE(fixed->GetData(), nullptr);
}

TEST_F(TracedLives, GivesANewFaceForANewObjectAtTheOldAddress)
{
    const void* before = nullptr;
    for (int round = 0; round < 20; ++round)
    {
        const auto map = MakeMap();
        EXPECT_EQ(map->SetInt("Round", round), TVX_OK);
        EXPECT_NE(map.Get(), before);
        before = map.Get();
    }
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
}

TEST_F(TracedLives, WalksUserDataByAHolderThatComesByValue)
{
    const auto map = MakeMap();
    const auto userData = Query<IUserDataContainer>(map);
    const auto probe = MakeRef<test::ProbeObject>();
    userData->SetUserData("map", map.Get());
    userData->SetUserData("own", probe.Get());
    {
        const auto iterator = userData->GetUserDataIterator();
        ASSERT_TRUE(iterator);
        EXPECT_STREQ(iterator->GetKey(), "map");
        Ref<IObjectBase> out;
        EXPECT_EQ(iterator->GetObject(out.Receive()), TVX_OK);
        EXPECT_EQ(out.Get(), map.Get());
        EXPECT_EQ(iterator->Next(), TVX_OK);
        EXPECT_EQ(iterator->GetObject(out.Receive()), TVX_OK);
        EXPECT_EQ(out.Get(), probe.Get());
        const IObjectBase* fixed = nullptr;
        EXPECT_EQ(userData->GetUserData("map", &fixed), TVX_S_VALUE);
        EXPECT_EQ(fixed, map.Get());
        EXPECT_EQ(const_cast<IObjectBase*>(fixed)->Release(), 3U);
        EXPECT_EQ(tracer.GetHeld().size(), 2U);
    }
    userData->ClearUserData();
    EXPECT_EQ(tracer.GetHeld().size(), 1U);
    EXPECT_EQ(map->GetRefCount(), 2U);
}

TEST_F(TracedLives, CanBeCalledBySlotNumbers)
{
    const auto map = MakeMap();
    using SetInt = Result (*)(void*, const char*, std::int32_t);
    using GetInt = Result (*)(void*, const char*, std::int32_t*);
    const auto* const slots = static_cast<void* const*>(Platform::GetTable(*map));
    EXPECT_EQ(reinterpret_cast<SetInt>(slots[11])(map.Get(), "Width", 5), TVX_OK);
    std::int32_t width = 0;
    EXPECT_EQ(reinterpret_cast<GetInt>(slots[14])(map.Get(), "Width", &width), TVX_OK);
    EXPECT_EQ(width, 5);
}

TEST_F(TracedLives, CanBeCalledByTheSlotsBehindTheInterface)
{
    const auto map = MakeMap();
    const auto handler = MakeRef<test::RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    using FireChanged = void (*)(void*, void*);
    const auto* const slots = static_cast<void* const*>(Platform::GetTable(*map));
    reinterpret_cast<FireChanged>(slots[28])(map.Get(), map.Get());
    ASSERT_EQ(handler->events.size(), 1U);
    EXPECT_EQ(handler->events[0].param, reinterpret_cast<std::uintptr_t>(map.Get()));
}

TEST_F(TracedLives, HasTheTypeOfTheLongestInterface)
{
    const auto map = MakeMap();
    IObjectBase* const base = map.Get();
    EXPECT_EQ(dynamic_cast<ISimpleMap5*>(base), map.Get());
    EXPECT_EQ(dynamic_cast<ICollection*>(base), nullptr);
    EXPECT_EQ(dynamic_cast<void*>(base), map.Get());
}

}  // namespace
}  // namespace tvx::host
