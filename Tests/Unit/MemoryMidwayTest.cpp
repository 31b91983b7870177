// SPDX-License-Identifier: MIT
#include "Src/CVariantArray.h"
#include "Src/Collection.h"
#include "Src/CollectionFactory.h"
#include "Src/VariantFactory.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MemoryTesting.h"

#include <gtest/gtest.h>

#include <string>

// Operations that memory may fail in on the way: what they have done by then stands, or they do without.
namespace tvx::test
{

namespace
{

using Append = Result (*)(CVariantArray& array, IObject* object);

constexpr Append Appends[] = {
    [](CVariantArray& array, IObject* object) { return array.AppendObject(object); },
    [](CVariantArray& array, IObject*) { return array.AppendString(LongText); },
    [](CVariantArray& array, IObject*) { return array.AppendDouble(1.5); },
    [](CVariantArray& array, IObject*) { return array.AppendFloat(1.5F); },
    [](CVariantArray& array, IObject*) { return array.AppendInt(1); },
    [](CVariantArray& array, IObject*) { return array.AppendBool(true); },
};

std::uint32_t SizeOf(IVariantArray& array)
{
    std::uint32_t size = 0;
    array.GetSize(&size);
    return size;
}

Ref<IVariant> ElementAt(IVariantArray& array, std::uint32_t index)
{
    Ref<IVariant> element;
    array.GetAt(index, element.Receive());
    return element;
}

// An immediate map that listens to itself, and what is written into it: another map, or the map.
class SubMapWriting : public testing::Test
{
protected:
    struct Maps
    {
        Maps()
        {
            map->SubscribeChanged(handler.Get(), 0, true);
            map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
        }

        std::size_t CountWritten() { return Entries(*map).size() - 2; }

        Ref<QuietHandler> handler = MakeRef<QuietHandler>();
        Ref<SimpleMap> map = MakeImmediateMap({{LongText, LongText}, {OtherText, OtherText}});
        Ref<SimpleMap> source = MakeMap({{"first", LongText}, {"second", LongText}});
    };

    // Failing, the map is out of batch updating mode again, tells what was written, and holds nothing.
    static void ExpectRestored(Maps& maps)
    {
        EXPECT_FALSE(IsBatchUpdating(*maps.map));
        EXPECT_EQ(TextUnder(*maps.map, LongText), LongText);
        EXPECT_TRUE(maps.map->IsUnique());
        EXPECT_TRUE(maps.source->IsUnique());
        const bool told = !maps.handler->heard.empty() && maps.handler->heard.back() == "Changed";
        EXPECT_EQ(told, maps.CountWritten() > 0) << testing::PrintToString(maps.handler->heard);
        maps.handler->heard.clear();
        maps.map->SetString("later", "value");
        EXPECT_EQ(maps.handler->heard, Texts{"Changed"});
    }

    // No iterator is reported, as one that the source refuses; all else is silent.
    static void ExpectCode(const Outcome& outcome)
    {
        if (!outcome.failed)
            EXPECT_EQ(outcome.result, TVX_OK);
        else if (outcome.result == TVX_E_FAIL)
            EXPECT_TRUE(IsReport(outcome.output, "TVX_RETURN_FAIL_IF_FAILED", "Src/SimpleMap.cpp"));
        else
            EXPECT_EQ(outcome.result, TVX_E_POINTER);
        EXPECT_EQ(outcome.output.empty(), outcome.result != TVX_E_FAIL);
    }
};

}  // namespace

TEST_F(SubMapWriting, RestoresTheModeWithoutMemory)
{
    const auto attempt = [](MemoryFailure failure)
    {
        Maps maps;
        const auto outcome = RunWith(failure, [&] { return maps.map->SetSubMap(LongText, maps.source.Get()); });
        ExpectCode(outcome);
        EXPECT_EQ(outcome.result == TVX_E_FAIL, outcome.failed && failure.first == 0);
        ExpectRestored(maps);
        return outcome.failed;
    };
    SweepFailures(attempt);
}

TEST_F(SubMapWriting, OfTheMapItselfRestoresTheModeWithoutMemory)
{
    const auto attempt = [](MemoryFailure failure)
    {
        Maps maps;
        const auto outcome = RunWith(failure, [&] { return maps.map->SetSubMap(LongText, maps.map.Get()); });
        ExpectCode(outcome);
        ExpectRestored(maps);
        return outcome.failed;
    };
    SweepFailures(attempt);
}

TEST_F(SubMapWriting, TellsItsChangesWhenOnlyTheEventOfTheModeCannotBeMade)
{
    std::size_t last = 0;
    {
        Maps maps;
        last = CountAllocations([&] { maps.map->SetSubMap("p", maps.source.Get()); }) - 1;
        EXPECT_EQ(maps.handler->heard, (Texts{"Mode true", "Mode false", "Changed"}));
    }
    Maps maps;
    const auto outcome = RunWith({last, false}, [&] { return maps.map->SetSubMap("p", maps.source.Get()); });
    EXPECT_TRUE(outcome.failed);
    EXPECT_EQ(outcome.result, TVX_E_POINTER);
    EXPECT_EQ(maps.handler->heard, (Texts{"Mode true", "Changed"}));
    EXPECT_EQ(maps.CountWritten(), 2U);
    EXPECT_FALSE(IsBatchUpdating(*maps.map));
}

TEST(WantOfMemoryMidway, LeavesAHandlerUnsubscribedThatCannotBeKept)
{
    const auto attempt = [](MemoryFailure failure)
    {
        const auto map = MakeImmediateMap();
        const auto handler = MakeRef<QuietHandler>();
        const auto subscribe = [&]
        {
            map->SubscribeChanged(handler.Get(), 0, true);
            return TVX_OK;
        };
        const auto outcome = RunWith(failure, subscribe);
        EXPECT_EQ(outcome.output, "");
        map->SetString("key", "value");
        EXPECT_EQ(handler->heard, outcome.failed ? Texts() : Texts{"Changed"});
        return outcome.failed;
    };
    SweepFailures(attempt);
}

TEST(WantOfMemoryMidway, LeavesAHandlerOfDestroyedUnsubscribedThatCannotBeKept)
{
    const auto attempt = [](MemoryFailure failure)
    {
        auto object = MakeRef<ProbeObject>();
        const auto handler = MakeRef<QuietHandler>();
        const auto subscribe = [&]
        {
            object->SubscribeDestroyed(handler.Get(), 0);
            return TVX_OK;
        };
        const auto outcome = RunWith(failure, subscribe);
        object = nullptr;
        EXPECT_EQ(handler->heard, outcome.failed ? Texts() : Texts{"Destroyed"});
        return outcome.failed;
    };
    SweepFailures(attempt);
}

// Only an array that cannot grow refuses: a variant that cannot be made becomes a null element.
TEST(WantOfMemoryMidway, AppendsNullToAnArrayWhereAVariantCannotBeMade)
{
    const auto factory = VariantFactory::GetOrMake();  // made before, as when the module is loaded
    for (const auto append : Appends)
    {
        bool appendedNull = false;
        bool refused = false;
        const auto attempt = [&](MemoryFailure failure)
        {
            const auto array = MakeRef<CVariantArray>();
            const auto object = MakeRef<ProbeObject>();
            const auto outcome = RunWith(failure, [&] { return append(*array, object.Get()); });
            EXPECT_EQ(outcome.output, "");
            EXPECT_EQ(SizeOf(*array), outcome.result == TVX_OK ? 1U : 0U);
            EXPECT_TRUE(outcome.result == TVX_OK || (outcome.failed && outcome.result == TVX_E_POINTER));
            const bool isNull = outcome.result == TVX_OK && !ElementAt(*array, 0);
            EXPECT_TRUE(outcome.failed || !isNull);
            EXPECT_TRUE(!outcome.failed || object->IsUnique());
            appendedNull = appendedNull || isNull;
            refused = refused || outcome.result == TVX_E_POINTER;
            return outcome.failed;
        };
        SweepFailures(attempt);
        EXPECT_TRUE(appendedNull);
        EXPECT_TRUE(refused);
    }
}

// A collection that cannot grow for an item goes on with the next one, and what has been read is delivered.
TEST(WantOfMemoryMidway, LeavesItemsOutOfACollectionThatIsReadBack)
{
    const auto factory = MakeRef<CollectionFactory>();
    const auto attempt = [&](MemoryFailure failure)
    {
        const auto object = MakeRef<ProbeObject>();
        auto reader = MakeRef<QuietReader>();
        reader->items = {Ref<IObjectBase>(object), Ref<IObjectBase>(object), Ref<IObjectBase>(object)};
        MarkedOut<IObjectBase> out;
        const auto outcome = RunWith(failure, [&] { return factory->Deserialize(reader.Get(), out.Get()); });
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.result, outcome.failed && failure.first == 0 ? TVX_E_POINTER : TVX_OK);
        EXPECT_EQ(out.IsWritten(), outcome.result == TVX_OK);
        const auto collection = Query<ICollection>(out.GetWritten());
        const auto count = collection ? collection->GetCount() : 0;
        EXPECT_EQ(count == 3U, !outcome.failed) << count;
        EXPECT_EQ(object->GetRefCount(), 4 + count);  // ours, the reader's three and the collection's
        return outcome.failed;
    };
    SweepFailures(attempt);
}

TEST(WantOfMemoryMidway, DeliversNoVariantThatIsReadBackAndSucceeds)
{
    const auto factory = VariantFactory::GetOrMake();
    const auto attempt = [&](MemoryFailure failure)
    {
        const auto reader = MakeRef<QuietReader>();
        reader->named = {{"type", 5}, {"value", std::string(LongText)}};
        MarkedOut<IObjectBase> out;
        const auto outcome = RunWith(failure, [&] { return factory->Deserialize(reader.Get(), out.Get()); });
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.result, TVX_OK);
        EXPECT_EQ(out.IsWritten(), !outcome.failed);
        return outcome.failed;
    };
    SweepFailures(attempt);
}

}  // namespace tvx::test
