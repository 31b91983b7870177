// SPDX-License-Identifier: MIT
#include "Src/CVariantArray.h"
#include "Src/Collection.h"
#include "Src/CollectionFactory.h"
#include "Src/Map.h"
#include "Src/Variant.h"
#include "Tests/Abi/AbiTest.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tvx::test
{

namespace
{

using Texts = std::vector<std::string>;

// A collection of two items, A and B, as C sees it.
class CollectionSlots : public testing::Test
{
protected:
    CollectionSlots()
    {
        CallICollectionAdd(c, ToC<IObject>(a));
        CallICollectionAdd(c, ToC<IObject>(b));
    }

    // "A", "B" or "?" for each item.
    std::string Order() const
    {
        std::string order;
        for (std::uint32_t index = 0; index < CallICollectionGetCount(c); ++index)
        {
            const auto item =
                FromC<IObject>([&](void** out) { EXPECT_EQ(CallICollectionGetItem(c, index, out), TVX_OK); });
            order += item.Get() == a.Get() ? 'A' : item.Get() == b.Get() ? 'B' : '?';
        }
        return order;
    }

    Ref<ProbeObject> a = MakeRef<ProbeObject>();
    Ref<ProbeObject> b = MakeRef<ProbeObject>();
    Ref<Collection> collection = MakeRef<Collection>();
    void* c = ToC<ICollection>(collection);
};

class Recorder final : public ClassImpl<Recorder, IMap>
{
public:
    using Interfaces = InterfaceList<IMap, IObject, IObjectBase>;

    Result SetValue(const char*, IObject*) override { return 11; }
    Result GetValue(const char*, IObject**) override { return 12; }
    Result LookupValue(const char*, IObject**) override { return 13; }
};

}  // namespace

TEST(MapSlots, KeepAndGiveValues)
{
    const auto factory = MakeRef<MapFactory>();
    const auto object = MakeRef<ProbeObject>();
    const auto map =
        FromC<IMap>([&](void** out) { EXPECT_EQ(CallIMapFactoryCreateMap(ToC<IMapFactory>(factory), out), TVX_OK); });
    EXPECT_EQ(CallIMapSetValue(ToC<IMap>(map), "key", ToC<IObject>(object)), TVX_OK);
    const auto got =
        FromC<IObject>([&](void** out) { EXPECT_EQ(CallIMapGetValue(ToC<IMap>(map), "key", out), TVX_S_VALUE); });
    const auto looked =
        FromC<IObject>([&](void** out) { EXPECT_EQ(CallIMapLookupValue(ToC<IMap>(map), "key", out), TVX_S_VALUE); });
    EXPECT_EQ(got.Get(), object.Get());
    EXPECT_EQ(looked.Get(), object.Get());
}

// Slots 12 and 13 do the same in the module's class: only a class of another make tells them apart.
TEST(MapSlots, KeepTheTwoLookUpsApart)
{
    const auto recorder = MakeRef<Recorder>();
    EXPECT_EQ(CallIMapSetValue(ToC<IMap>(recorder), "", nullptr), 11);
    EXPECT_EQ(CallIMapGetValue(ToC<IMap>(recorder), "", nullptr), 12);
    EXPECT_EQ(CallIMapLookupValue(ToC<IMap>(recorder), "", nullptr), 13);
}

TEST_F(CollectionSlots, InsertAndRemove)
{
    EXPECT_EQ(Order(), "AB");
    EXPECT_EQ(CallICollectionInsert(c, 0, ToC<IObject>(b)), TVX_OK);
    EXPECT_EQ(CallICollectionInsertBefore(c, ToC<IObject>(a), ToC<IObject>(b)), TVX_OK);
    EXPECT_EQ(Order(), "ABAB");
    EXPECT_EQ(CallICollectionRemoveAt(c, 1), TVX_OK);
    EXPECT_EQ(Order(), "AAB");
    EXPECT_EQ(CallICollectionRemove(c, ToC<IObject>(a)), TVX_OK);
    EXPECT_EQ(Order(), "AB");
    EXPECT_EQ(CallICollectionRemoveLast(c), TVX_OK);
    EXPECT_EQ(Order(), "A");
    EXPECT_EQ(CallICollectionClear(c), TVX_OK);
    EXPECT_EQ(Order(), "");
}

TEST_F(CollectionSlots, MoveAndFind)
{
    EXPECT_EQ(CallICollectionMove(c, 0, 2), TVX_OK);
    EXPECT_EQ(Order(), "BA");
    EXPECT_EQ(CallICollectionMoveItem(c, ToC<IObject>(a), 0), TVX_OK);
    EXPECT_EQ(Order(), "AB");
    EXPECT_EQ(CallICollectionMoveBefore(c, ToC<IObject>(b), ToC<IObject>(a)), TVX_OK);
    EXPECT_EQ(Order(), "BA");
    std::uint32_t index = 7;
    EXPECT_EQ(CallICollectionIndexOf(c, ToC<IObject>(a), &index), TVX_OK);
    EXPECT_EQ(index, 1u);
    bool contained = false;
    EXPECT_EQ(CallICollectionContains(c, ToC<IObject>(b), &contained), TVX_OK);
    EXPECT_TRUE(contained);
}

TEST_F(CollectionSlots, SubscribeEachEventOnItsOwn)
{
    const auto added = MakeRef<RecordingHandler>();
    const auto removed = MakeRef<RecordingHandler>();
    const auto moved = MakeRef<RecordingHandler>();
    const auto updated = MakeRef<RecordingHandler>();
    CallICollectionSubscribeItemAdded(c, ToC<IEventHandler>(added), 1, true);
    CallICollectionSubscribeItemRemoved(c, ToC<IEventHandler>(removed), 2, true);
    CallICollectionSubscribeItemMoved(c, ToC<IEventHandler>(moved), 3, true);
    CallICollectionSubscribeUpdated(c, ToC<IEventHandler>(updated), 4, true);
    CallCollectionFireItemAdded(c, ToC<IObject>(a));
    CallCollectionFireItemRemoved(c, ToC<IObject>(a));
    CallCollectionFireItemMoved(c, ToC<IObject>(a));
    CallCollectionFireUpdated(c, ToC<IObject>(a));
    EXPECT_EQ(added->GetNames(), Texts{"ItemAdded"});
    EXPECT_EQ(removed->GetNames(), Texts{"ItemRemoved"});
    EXPECT_EQ(moved->GetNames(), Texts{"ItemMoved"});
    EXPECT_EQ(updated->GetNames(), Texts{"Updated"});
    EXPECT_EQ(CallICollectionNotifyUpdated(c, ToC<IObject>(a)), TVX_OK);
    EXPECT_EQ(updated->events.size(), 2u);
    EXPECT_EQ(updated->events.back().userData, 4u);
}

TEST_F(CollectionSlots, SwitchEvents)
{
    bool enabled = false;
    EXPECT_EQ(CallICollectionGetEventsEnabled(c, &enabled), TVX_OK);
    EXPECT_TRUE(enabled);
    EXPECT_EQ(CallICollectionSetEventsEnabled(c, false), TVX_OK);
    EXPECT_EQ(CallICollectionGetEventsEnabled(c, &enabled), TVX_OK);
    EXPECT_FALSE(enabled);
}

TEST(CollectionFactorySlots, MakeCollections)
{
    const auto factory = MakeRef<CollectionFactory>();
    const auto collection = FromC<ICollection>(
        [&](void** out)
        { EXPECT_EQ(CallICollectionFactoryCreateCollection(ToC<ICollectionFactory>(factory), out), TVX_OK); });
    EXPECT_EQ(CallICollectionGetCount(ToC<ICollection>(collection)), 0u);
}

TEST(VariantArraySlots, AppendEachType)
{
    const auto array = MakeRef<CVariantArray>();
    const auto variant = MakeRef<IntVariant>(9);
    void* const c = ToC<IVariantArray>(array);
    EXPECT_EQ(CallIVariantArrayAppendObject(c, nullptr), TVX_OK);
    EXPECT_EQ(CallIVariantArrayAppendString(c, "text"), TVX_OK);
    EXPECT_EQ(CallIVariantArrayAppendDouble(c, 0.1), TVX_OK);
    EXPECT_EQ(CallIVariantArrayAppendFloat(c, 0.5F), TVX_OK);
    EXPECT_EQ(CallIVariantArrayAppendInt(c, -5), TVX_OK);
    EXPECT_EQ(CallIVariantArrayAppendBool(c, true), TVX_OK);
    EXPECT_EQ(CallIVariantArrayAppendVariant(c, ToC<IVariant>(variant)), TVX_OK);
    std::uint32_t size = 0;
    EXPECT_EQ(CallIVariantArrayGetSize(c, &size), TVX_OK);
    EXPECT_EQ(size, 7u);
    const std::int32_t types[] = {IVariant::TypeObject, IVariant::TypeString, IVariant::TypeDouble, IVariant::TypeFloat,
                                  IVariant::TypeInt,    IVariant::TypeBool,   IVariant::TypeInt};
    for (std::uint32_t index = 0; index < size; ++index)
    {
        const auto element =
            FromC<IVariant>([&](void** out) { EXPECT_EQ(CallIVariantArrayGetAt(c, index, out), TVX_OK); });
        EXPECT_EQ(element->GetType(), types[index]) << index;
    }
}

}  // namespace tvx::test
