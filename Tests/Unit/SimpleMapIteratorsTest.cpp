// SPDX-License-Identifier: MIT
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/MapTesting.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace
{

using namespace tvx;
using namespace tvx::test;

Ref<ISimpleMapIterator> GetIterator(ISimpleMap& map)
{
    Ref<ISimpleMapIterator> iterator;
    EXPECT_EQ(map.GetIterator(iterator.Receive()), TVX_OK);
    return iterator;
}

Ref<ISimpleMapIterator> GetIteratorNoSubMaps(ISimpleMap& map)
{
    Ref<ISimpleMapIterator> iterator;
    EXPECT_EQ(map.GetIteratorNoSubMaps(iterator.Receive()), TVX_OK);
    return iterator;
}

bool IsAtEnd(ISimpleMapIterator& iterator)
{
    bool end = false;
    EXPECT_EQ(iterator.IsEnd(&end), TVX_OK);
    return end;
}

// What both kinds have in common is asked of both.
class EitherSimpleMapIterator : public testing::TestWithParam<bool>
{
protected:
    static Ref<ISimpleMapIterator> Get(ISimpleMap& map)
    {
        return GetParam() ? GetIteratorNoSubMaps(map) : GetIterator(map);
    }
    static const char* GetSource()
    {
        return GetParam() ? "Src/SimpleMapIteratorNoSubMaps.cpp" : "Src/SimpleMapIterator.cpp";
    }
};

INSTANTIATE_TEST_SUITE_P(, EitherSimpleMapIterator, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "WithoutSubMaps" : "OfEveryEntry"; });

TEST_P(EitherSimpleMapIterator, OfAnEmptyMapIsAtTheEndAtOnce)
{
    const auto map = MakeMap();
    const auto iterator = Get(*map);
    EXPECT_TRUE(IsAtEnd(*iterator));
    EXPECT_EQ(iterator->GetKey(), nullptr);
    EXPECT_EQ(iterator->GetValue(), nullptr);
    EXPECT_EQ(iterator->Next(), TVX_E_FAIL);
    EXPECT_TRUE(IsAtEnd(*iterator));
}

TEST_P(EitherSimpleMapIterator, StandsOnTheFirstEntryAndMovesToTheEnd)
{
    const auto map = MakeMap({{"b", "2"}, {"a", "1"}});
    const auto iterator = Get(*map);
    EXPECT_STREQ(iterator->GetKey(), "a");
    EXPECT_STREQ(iterator->GetValue(), "1");
    EXPECT_FALSE(IsAtEnd(*iterator));
    EXPECT_EQ(iterator->Next(), TVX_OK);
    EXPECT_STREQ(iterator->GetKey(), "b");
    EXPECT_STREQ(iterator->GetValue(), "2");
    EXPECT_FALSE(IsAtEnd(*iterator));
    EXPECT_EQ(iterator->Next(), TVX_E_FAIL);
    EXPECT_EQ(iterator->GetKey(), nullptr);
    EXPECT_EQ(iterator->GetValue(), nullptr);
    EXPECT_TRUE(IsAtEnd(*iterator));
}

TEST_P(EitherSimpleMapIterator, StaysAtTheEndInSilence)
{
    const auto map = MakeMap({{"a", "1"}});
    const auto iterator = Get(*map);
    const auto output = CaptureOutput(
        [&]
        {
            for (int step = 0; step < 3; ++step)
                EXPECT_EQ(iterator->Next(), TVX_E_FAIL);
        });
    EXPECT_EQ(output, "");
    EXPECT_TRUE(IsAtEnd(*iterator));
    map->SetString("b", "2");
    EXPECT_TRUE(IsAtEnd(*iterator));
}

TEST_P(EitherSimpleMapIterator, VisitsAKeyInsertedBehindItAndNoneBeforeIt)
{
    const auto map = MakeMap({{"b", "2"}, {"f", "6"}});
    const auto iterator = Get(*map);
    Fill(*map, {{"a", "1"}, {"d", "4"}});
    EXPECT_STREQ(iterator->GetKey(), "b");
    EXPECT_EQ(iterator->Next(), TVX_OK);
    EXPECT_STREQ(iterator->GetKey(), "d");
    Fill(*map, {{"c", "3"}, {"e", "5"}, {"g", "7"}});
    EXPECT_EQ(Walk(*iterator), (Texts{"d=4", "e=5", "f=6", "g=7"}));
}

TEST_P(EitherSimpleMapIterator, SeesTheNewValueOfItsEntry)
{
    const auto map = MakeMap({{"a", "1"}});
    const auto iterator = Get(*map);
    const char* const key = iterator->GetKey();
    map->SetString("a", "a text that takes more room than the one before did");
    EXPECT_STREQ(iterator->GetValue(), "a text that takes more room than the one before did");
    EXPECT_EQ(iterator->GetKey(), key);  // the map owns it, and it never moves
}

TEST_P(EitherSimpleMapIterator, MovesOnlyItself)
{
    const auto map = MakeMap({{"a", "1"}, {"b", "2"}});
    const auto first = Get(*map);
    const auto second = Get(*map);
    EXPECT_NE(first.Get(), second.Get());
    first->Next();
    EXPECT_STREQ(second->GetKey(), "a");
}

TEST_P(EitherSimpleMapIterator, IsOwnedByTheCallerAndHoldsNoMap)
{
    const auto map = MakeMap({{"a", "1"}});
    const auto iterator = Get(*map);
    EXPECT_EQ(iterator->GetRefCount(), 1U);
    EXPECT_TRUE(map->IsUnique());
}

TEST_P(EitherSimpleMapIterator, AnswersNothingButIObjectBase)
{
    const auto map = MakeMap();
    const auto iterator = Get(*map);
    EXPECT_EQ(Query<IObjectBase>(iterator).Get(), iterator.Get());
    for (const char* const id : {IObject::Id, ISimpleMap::Id, "com.talvere.general.tvx.ISimpleMapIterator/1.0", "",
                                 static_cast<const char*>(nullptr)})
    {
        void* face = map.Get();
        EXPECT_EQ(iterator->QueryInterface(id, &face), TVX_E_NOINTERFACE);
        EXPECT_EQ(face, map.Get());
    }
    EXPECT_EQ(iterator->QueryInterface(IObjectBase::Id, nullptr), TVX_E_NOINTERFACE);
    EXPECT_TRUE(iterator->IsUnique());
}

TEST_P(EitherSimpleMapIterator, ReportsANullOutOfIsEnd)
{
    const auto map = MakeMap({{"a", "1"}});
    const auto iterator = Get(*map);
    const auto output = CaptureOutput([&] { EXPECT_EQ(iterator->IsEnd(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", GetSource()));
}

TEST_P(EitherSimpleMapIterator, IsRefusedForANullOutInSilence)
{
    const auto map = MakeMap();
    Result result = TVX_OK;
    const auto output =
        CaptureOutput([&] { result = GetParam() ? map->GetIteratorNoSubMaps(nullptr) : map->GetIterator(nullptr); });
    EXPECT_EQ(result, TVX_E_POINTER);
    EXPECT_EQ(output, "");
}

TEST(SimpleMapIterator, VisitsEveryEntry)
{
    const auto map = MakeMap({{"b", "4"}, {"ab", "3"}, {"a\\b", "2"}, {"a", "1"}});
    EXPECT_EQ(Walk(*GetIterator(*map)), (Texts{"a=1", "a\\b=2", "ab=3", "b=4"}));
}

TEST(SimpleMapIteratorNoSubMaps, SkipsWhatBeginsWithTheKeyJustVisited)
{
    const auto map = MakeMap({{"b", "5"}, {"ab", "3"}, {"abc", "4"}, {"a\\b", "2"}, {"a", "1"}});
    EXPECT_EQ(Walk(*GetIteratorNoSubMaps(*map)), (Texts{"a=1", "b=5"}));
}

TEST(SimpleMapIteratorNoSubMaps, VisitsNeighboursOfWhichNeitherBeginsWithTheOther)
{
    const auto map = MakeMap({{"a\\c", "2"}, {"a\\b", "1"}});
    EXPECT_EQ(Walk(*GetIteratorNoSubMaps(*map)), (Texts{"a\\b=1", "a\\c=2"}));
}

TEST(SimpleMapIteratorNoSubMaps, ComparesWithTheLastVisitedKeyOnly)
{
    const auto map = MakeMap({{"a\\b", "1"}, {"a\\b\\c", "2"}, {"a\\c", "3"}, {"a\\cd", "4"}, {"b", "5"}, {"ba", "6"}});
    EXPECT_EQ(Walk(*GetIteratorNoSubMaps(*map)), (Texts{"a\\b=1", "a\\c=3", "b=5"}));
}

TEST(SimpleMapIteratorNoSubMaps, EndsBehindTheEmptyKeyWhichEveryKeyBeginsWith)
{
    const auto map = MakeMap({{"", "0"}, {"a", "1"}, {"b", "2"}});
    const auto iterator = GetIteratorNoSubMaps(*map);
    EXPECT_STREQ(iterator->GetKey(), "");
    EXPECT_EQ(iterator->Next(), TVX_E_FAIL);
    EXPECT_TRUE(IsAtEnd(*iterator));
}

TEST(SimpleMapIteratorNoSubMaps, EndsWhenTheRestIsBelowTheLastKey)
{
    const auto map = MakeMap({{"a", "1"}, {"a\\b", "2"}, {"a\\c", "3"}});
    const auto iterator = GetIteratorNoSubMaps(*map);
    EXPECT_EQ(iterator->Next(), TVX_E_FAIL);
    EXPECT_EQ(iterator->GetKey(), nullptr);
}

TEST(SimpleMapIteratorNoSubMaps, SkipsAlsoWhatIsInsertedBelowItsEntry)
{
    const auto map = MakeMap({{"a", "1"}, {"b", "2"}});
    const auto iterator = GetIteratorNoSubMaps(*map);
    map->SetString("a\\b", "new");
    EXPECT_EQ(iterator->Next(), TVX_OK);
    EXPECT_STREQ(iterator->GetKey(), "b");
}

}  // namespace
