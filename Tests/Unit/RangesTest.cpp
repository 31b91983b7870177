// SPDX-License-Identifier: MIT
#include "Helpers/Ranges.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/CollectionTesting.h"
#include "Tests/Support/MemoryTesting.h"
#include "Tests/Support/UserDataTesting.h"

#include <gtest/gtest.h>

#include <iterator>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace
{

using namespace tvx;
using namespace tvx::test;

// What a range over a settings map walks, one text "key=value" for each entry.
Texts Describe(const MapRange& range)
{
    Texts texts;
    for (const auto [key, value] : range)
        texts.push_back(std::string(key) + "=" + value);
    return texts;
}

// A map that gives no iterators and no sub-maps, but tells of success or a failure of the test's own. A failing
// operation has delivered all the same, so that a reference that is forgotten shows in the counts.
class ScriptedMap final : public SimpleMap
{
public:
    Result GetIterator(ISimpleMapIterator** out) override
    {
        if (TVX_FAILED(result))
            static_cast<void>(SimpleMap::GetIterator(out));
        return result;
    }
    Result GetSubMap(const char*, ISimpleMap** out) override
    {
        if (TVX_FAILED(result))
            HandOut(static_cast<ISimpleMap*>(given.Get()), out);
        return result;
    }

    Result result = TVX_OK;
    const Ref<SimpleMap> given = MakeMap({{"key", "value"}});
};

class ItemRange : public CollectionTest
{
protected:
    std::string Walk()
    {
        std::string names;
        for (const auto& item : tvx::Items(*collection))
            names += NameOf(item.Get());
        return names;
    }
};

TEST_F(ItemRange, WalksTheItemsInOrderWithTheNullOnes)
{
    EXPECT_EQ(Walk(), "");
    Fill("AB-A");
    const auto output = CaptureOutput([&] { EXPECT_EQ(Walk(), "AB-A"); });
    EXPECT_EQ(output, "");
}

TEST_F(ItemRange, GivesEachItemWithOneReference)
{
    Fill("A");
    for (const auto& item : tvx::Items(*collection))
    {
        EXPECT_EQ(item.Get(), Item('A'));
        EXPECT_EQ(CountOf('A'), 2U);
        EXPECT_EQ(collection->GetRefCount(), 2U);
    }
    EXPECT_EQ(CountOf('A'), 1U);
    EXPECT_TRUE(collection->IsUnique());
}

TEST_F(ItemRange, KeepsTheCollectionAlive)
{
    Fill("AB");
    std::string names;
    for (const auto& item : tvx::Items(*std::exchange(collection, nullptr)))
        names += NameOf(item.Get());
    EXPECT_EQ(names, "AB");
    EXPECT_EQ(CountOf('A'), 0U);
}

TEST_F(ItemRange, EndsWhereTheCollectionHasShrunkTo)
{
    Fill("ABCD");
    std::string names;
    const auto output = CaptureOutput(
        [&]
        {
            for (const auto& item : tvx::Items(*collection))
            {
                names += NameOf(item.Get());
                collection->RemoveLast();
            }
        });
    EXPECT_EQ(names, "AB");
    EXPECT_EQ(Order(), "AB");
    EXPECT_EQ(output, "") << "the index never stands behind the end";
}

TEST_F(ItemRange, PassesOverOneItemWhenOneIsTakenOutInFront)
{
    Fill("ABCD");
    std::string names;
    for (const auto& item : tvx::Items(*collection))
    {
        names += NameOf(item.Get());
        if (item.Get() == Item('B'))
            collection->Remove(item.Get());
    }
    EXPECT_EQ(names, "ABD");
}

TEST_F(ItemRange, WalksWhatIsAppendedMeanwhile)
{
    Fill("AB");
    std::string names;
    for (const auto& item : tvx::Items(*collection))
    {
        names += NameOf(item.Get());
        if (item.Get() == Item('A'))
            Fill("C");
    }
    EXPECT_EQ(names, "ABC");
}

TEST_F(ItemRange, OfOneInterfaceLeavesTheOthersOut)
{
    const auto first = MakeMap();
    const auto second = MakeMap();
    Fill("A-");
    collection->Add(static_cast<ISimpleMap5*>(first.Get()));
    Fill("B");
    collection->Add(static_cast<ISimpleMap5*>(second.Get()));
    collection->Add(static_cast<ISimpleMap5*>(second.Get()));
    Fill("C");
    std::vector<ISimpleMap*> maps;
    for (const auto& map : ItemsAs<ISimpleMap>(*collection))
    {
        maps.push_back(map.Get());
        EXPECT_EQ(map->GetRefCount(), maps.size() == 1 ? 3U : 4U);
    }
    EXPECT_EQ(maps, (std::vector<ISimpleMap*>{first.Get(), second.Get(), second.Get()}));
    EXPECT_EQ(first->GetRefCount(), 2U);
    EXPECT_EQ(second->GetRefCount(), 3U);
    EXPECT_EQ(CountOf('A') + CountOf('B') + CountOf('C'), 3U);
    EXPECT_TRUE(collection->IsUnique());
}

TEST_F(ItemRange, OfOneInterfaceMayBeEmpty)
{
    Fill("A-B");
    for (const auto& map : ItemsAs<ISimpleMap>(*collection))
        ADD_FAILURE() << map.Get();
    for (const auto& map : ItemsAs<ISimpleMap>(*MakeRef<Collection>()))
        ADD_FAILURE() << map.Get();
}

TEST_F(ItemRange, OfOneInterfaceEndsWhereTheCollectionHasShrunkTo)
{
    for (int count = 0; count < 4; ++count)
        collection->Add(static_cast<ISimpleMap5*>(MakeMap().Get()));
    int walked = 0;
    const auto output = CaptureOutput(
        [&]
        {
            for (const auto& map : ItemsAs<ISimpleMap>(*collection))
            {
                EXPECT_EQ(map->GetRefCount(), 2U);
                collection->RemoveLast();
                ++walked;
            }
        });
    EXPECT_EQ(walked, 2);
    EXPECT_EQ(output, "");
}

TEST(MapRange, WalksTheEntriesInKeyOrder)
{
    const auto map = MakeMap({{"b", "2"}, {"a\\c", "1"}, {"a", ""}});
    const auto output = CaptureOutput([&] { EXPECT_EQ(Describe(tvx::Entries(*map)), (Texts{"a=", "a\\c=1", "b=2"})); });
    EXPECT_EQ(output, "");
    EXPECT_TRUE(Describe(tvx::Entries(*MakeMap())).empty());
    EXPECT_TRUE(map->IsUnique());
}

TEST(MapRange, LeavesOutWhatIsBelowAnEntry)
{
    const auto map = MakeMap({{"a", "0"}, {"a\\b", "1"}, {"ab", "2"}, {"b", "3"}, {"c\\d", "4"}});
    EXPECT_EQ(Describe(EntriesNoSubMaps(*map)), (Texts{"a=0", "b=3", "c\\d=4"}));
    EXPECT_TRUE(map->IsUnique());
}

TEST(MapRange, WalksTheChildrenOfAPath)
{
    const auto map = MakeMap({{"Display", "0"},
                              {"Display\\Mode", "on"},
                              {"Display\\Mode\\Rate", "60"},
                              {"Display\\Width", "640"},
                              {"E", ""}});
    EXPECT_EQ(Describe(Children(*map, "Display")), (Texts{"Mode=on", "Mode\\Rate=60", "Width=640"}));
    EXPECT_EQ(Describe(ChildrenNoSubMaps(*map, "Display")), (Texts{"Mode=on", "Width=640"}));
    EXPECT_EQ(Describe(Children(*map, "Display\\Mode")), Texts{"Rate=60"});
    EXPECT_TRUE(map->IsUnique());
}

TEST(MapRange, FindsNoChildrenOfAnAbsentPathWithoutFailing)
{
    const auto map = MakeMap({{"Display", "0"}});
    const auto output = CaptureOutput(
        [&]
        {
            for (const auto& range : {Children(*map, "Display"), ChildrenNoSubMaps(*map, "Sound")})
            {
                EXPECT_TRUE(Describe(range).empty());
                EXPECT_FALSE(TVX_FAILED(range.GetResult()));
            }
        });
    EXPECT_EQ(output, "");
}

TEST(MapRange, PassesOnWhatTheMapSaysOfANullPath)
{
    const auto map = MakeMap({{"Display\\Width", "640"}});
    const auto output = CaptureOutput(
        [&]
        {
            const auto range = Children(*map, nullptr);
            EXPECT_TRUE(Describe(range).empty());
            EXPECT_EQ(range.GetResult(), TVX_E_FAIL);
        });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", "Src/SimpleMap.cpp"));
}

TEST(MapRange, KeepsTheMapAlive)
{
    Texts keys;
    for (const auto& [key, value] : tvx::Entries(*MakeMap({{"a", "1"}, {"b", "2"}})))
        keys.push_back(std::string(key) + value);
    for (const auto& [key, value] : Children(*MakeMap({{"a\\c", "3"}}), "a"))
        keys.push_back(std::string(key) + value);
    EXPECT_EQ(keys, (Texts{"a1", "b2", "c3"}));
}

TEST(MapRange, HoldsOneReferenceAsLongAsItLives)
{
    const auto map = MakeMap({{"a", "1"}});
    {
        const auto range = tvx::Entries(*map);
        EXPECT_EQ(range.GetResult(), TVX_OK);
        EXPECT_EQ(map->GetRefCount(), 2U);
    }
    EXPECT_TRUE(map->IsUnique());
}

TEST(MapRange, WalksWhatIsWrittenBehindItsPlace)
{
    const auto map = MakeMap({{"b", "1"}, {"d", "1"}});
    Texts seen;
    for (const auto& [key, value] : tvx::Entries(*map))
    {
        seen.push_back(std::string(key) + value);
        Fill(*map, {{"a", "new"}, {"c", "new"}, {"d", "written"}});
    }
    EXPECT_EQ(seen, (Texts{"b1", "cnew", "dwritten"}));
}

TEST(MapRange, OfChildrenStaysAsItWasWhenTheMapIsWrittenTo)
{
    const auto map = MakeMap({{"p\\b", "1"}, {"p\\d", "1"}});
    Texts seen;
    for (const auto& [key, value] : Children(*map, "p"))
    {
        Fill(*map, {{"p\\c", "new"}, {"p\\d", "written"}});
        seen.push_back(std::string(key) + value);
    }
    EXPECT_EQ(seen, (Texts{"b1", "d1"}));
}

TEST(MapRange, IsEmptyAndSaysWhyWhenThereIsNoIterator)
{
    const auto map = MakeRef<ScriptedMap>();
    Fill(*map, {{"a", "1"}});
    for (const auto& [result, due] : {std::pair(TVX_OK, TVX_E_FAIL), std::pair(Result(-42), Result(-42))})
    {
        map->result = result;
        for (const auto& range : {tvx::Entries(*map), Children(*map, "a")})
        {
            EXPECT_TRUE(Describe(range).empty());
            EXPECT_EQ(range.GetResult(), due);
        }
    }
    EXPECT_TRUE(map->IsUnique());
    EXPECT_TRUE(map->given->IsUnique());
}

template <class MakeRange>
void ExpectEmptyForWantOfMemory(MakeRange makeRange)
{
    const auto map = MakeMap({{"a", LongText}, {"a\\b", LongText}});
    SweepFailures(
        [&](MemoryFailure failure)
        {
            std::optional<MapRange> range;
            const auto outcome = RunWith(failure, [&] { return range.emplace(makeRange(*map)).GetResult(); });
            EXPECT_EQ(TVX_FAILED(outcome.result), outcome.failed);
            EXPECT_TRUE(!outcome.failed || outcome.result == TVX_E_POINTER);
            EXPECT_EQ(Describe(*range).empty(), outcome.failed);
            EXPECT_EQ(outcome.output, "");
            return outcome.failed;
        });
    EXPECT_TRUE(map->IsUnique());
}

TEST(MapRange, IsEmptyForWantOfMemoryAndSaysSo)
{
    ExpectEmptyForWantOfMemory([](ISimpleMap& map) { return tvx::Entries(map); });
    ExpectEmptyForWantOfMemory([](ISimpleMap& map) { return EntriesNoSubMaps(map); });
    ExpectEmptyForWantOfMemory([](ISimpleMap& map) { return Children(map, "a"); });
    ExpectEmptyForWantOfMemory([](ISimpleMap& map) { return ChildrenNoSubMaps(map, "a"); });
}

TEST(MapRange, AllocatesItsIteratorOnly)
{
    const auto map = MakeMap({{"a", LongText}, {"b", LongText}});
    const auto allocations = CountAllocations(
        [&]
        {
            for (const auto& [key, value] : tvx::Entries(*map))
                EXPECT_EQ(std::string_view(value).size(), std::string_view(LongText).size()) << key;
        });
    EXPECT_EQ(allocations, 1U);
}

TEST(MapRange, IsARangeOfTheStandardLibrary)
{
    static_assert(std::ranges::input_range<const MapRange>);
    static_assert(std::ranges::input_range<const UserDataRange>);
    static_assert(!std::is_copy_assignable_v<MapRange>, "the old map would go before its iterator");
    static_assert(std::ranges::input_range<const CollectionRange<ItemWalk>>);
    static_assert(std::ranges::input_range<const CollectionRange<ItemAsWalk<ISimpleMap>>>);
    const auto map = MakeMap({{"a", "1"}, {"b", "2"}, {"c", "1"}});
    const auto range = tvx::Entries(*map);
    const auto isOne = [](const MapEntry& entry) { return std::string_view(entry.value) == "1"; };
    EXPECT_EQ(std::ranges::count_if(range, isOne), 2);
}

class UserDataRangeTest : public testing::Test
{
protected:
    Texts Walk()
    {
        Texts texts;
        for (const auto& [name, attached] : UserData(*container))
            texts.push_back(std::string(name) + (attached.Get() == object.Get() ? " object" : " other"));
        return texts;
    }

    const Ref<IObjectBase> object = Ref<IObjectBase>(MakeRef<ProbeObject>());
    const Ref<IObjectBase> other = Ref<IObjectBase>(MakeRef<BareObject>());
    const Ref<RefusingContainer> container = MakeRef<RefusingContainer>();
};

TEST_F(UserDataRangeTest, WalksWhatIsAttachedInTheOrderOfTheNames)
{
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_TRUE(Walk().empty());
            container->SetUserData("b", object.Get());
            container->SetUserData("a", other.Get());
            EXPECT_EQ(Walk(), (Texts{"a other", "b object"}));
        });
    EXPECT_EQ(output, "");
}

TEST_F(UserDataRangeTest, LeavesNoReferenceBehind)
{
    container->SetUserData("a", object.Get());
    for (const auto& [name, attached] : UserData(*container))
    {
        EXPECT_EQ(object->GetRefCount(), 3U) << name;
        EXPECT_EQ(container->GetRefCount(), 2U);
    }
    EXPECT_EQ(object->GetRefCount(), 2U);
    EXPECT_TRUE(container->IsUnique());
}

TEST_F(UserDataRangeTest, KeepsTheContainerAlive)
{
    auto shortLived = MakeRef<RefusingContainer>();
    shortLived->SetUserData("a", object.Get());
    Texts names;
    for (const auto& [name, attached] : UserData(*std::exchange(shortLived, nullptr)))
        names.push_back(name);
    EXPECT_EQ(names, Texts{"a"});
    EXPECT_TRUE(object->IsUnique());
}

TEST_F(UserDataRangeTest, IsEmptyAndSaysWhyWhenThereIsNoIterator)
{
    container->SetUserData("a", object.Get());
    container->refusal = TVX_E_PRECONDITION;
    EXPECT_TRUE(Walk().empty());
    EXPECT_EQ(UserData(*container).GetResult(), TVX_E_PRECONDITION);
    container->refusal = TVX_OK;
    EXPECT_EQ(UserData(*container).GetResult(), TVX_OK);
    const FailingMemory memory({0, true});
    EXPECT_EQ(UserData(*container).GetResult(), TVX_E_POINTER);
}

}  // namespace
