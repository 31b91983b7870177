// SPDX-License-Identifier: MIT
#include "Src/SimpleMap.h"
#include "Src/SimpleMapIterator.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::test;

// Walks entries of the test's own, in no order.
class ListIterator final : public CountedImpl<ListIterator, ISimpleMapIterator>
{
public:
    using Interfaces = InterfaceList<IObjectBase>;
    using List = std::vector<std::pair<std::string, std::string>>;

    explicit ListIterator(List list) : list_(std::move(list)) {}

    const char* GetKey() override { return IsAtEnd() ? nullptr : list_[position_].first.c_str(); }
    const char* GetValue() override { return IsAtEnd() ? nullptr : list_[position_].second.c_str(); }
    Result Next() override
    {
        position_ += IsAtEnd() ? 0 : 1;
        return IsAtEnd() ? TVX_E_FAIL : TVX_OK;
    }
    Result IsEnd(bool* out) override
    {
        *out = IsAtEnd();
        return TVX_OK;
    }

private:
    bool IsAtEnd() const { return position_ == list_.size(); }

    List list_;
    std::size_t position_ = 0;
};

// A map that shows entries of the test's own to whoever walks it.
class ListedMap final : public SimpleMap
{
public:
    Result GetIterator(ISimpleMapIterator** out) override
    {
        *out = nullptr;
        if (gives)
            HandOut(MakeRef<ListIterator>(list).Get(), out);
        return result;
    }

    ListIterator::List list;
    Result result = TVX_OK;
    bool gives = true;
};

// A map that hides its first entry from whoever walks it.
class HidingMap final : public SimpleMap
{
public:
    Result GetIterator(ISimpleMapIterator** out) override
    {
        const auto result = SimpleMap::GetIterator(out);
        (*out)->Next();
        return result;
    }
};

// A map whose second write fails.
class FailingMap final : public SimpleMap
{
public:
    Result SetString(const char* key, const char* value) override
    {
        return ++writes == 2 ? -42 : SimpleMap::SetString(key, value);
    }

    int writes = 0;
};

Ref<ISimpleMap> GetSubMap(ISimpleMap& map, const char* path)
{
    Ref<ISimpleMap> below;
    const auto result = map.GetSubMap(path, below.Receive());
    EXPECT_EQ(result, Entries(*below).empty() ? TVX_S_NOKEY : TVX_S_VALUE);
    return below;
}

TEST(SimpleMapSubMaps, HoldAllDescendantsWithoutThePath)
{
    const auto map = MakeMap({{"a", "0"}, {"a\\x", "1"}, {"a\\y\\z", "2"}, {"ab\\q", "3"}, {"A\\x", "4"}});
    Ref<ISimpleMap> below;
    EXPECT_EQ(map->GetSubMap("a", below.Receive()), TVX_S_VALUE);
    EXPECT_EQ(Entries(*below), (Texts{"x=1", "y\\z=2"}));
    EXPECT_EQ(below->GetRefCount(), 1U);
    EXPECT_EQ(Entries(*GetSubMap(*map, "a\\y")), Texts{"z=2"});
}

TEST(SimpleMapSubMaps, AreDeliveredEmptyWhenNothingIsBelow)
{
    const auto map = MakeMap({{"a", "0"}, {"ab\\q", "3"}});
    Ref<ISimpleMap> below;
    EXPECT_EQ(map->GetSubMap("a", below.Receive()), TVX_S_NOKEY);
    ASSERT_TRUE(below);
    EXPECT_EQ(Entries(*below), Texts());
    EXPECT_EQ(MakeMap()->GetSubMap("a", below.Receive()), TVX_S_NOKEY);
    EXPECT_TRUE(below);
}

TEST(SimpleMapSubMaps, OfTheEmptyPathAreTheKeysThatBeginWithTheSeparator)
{
    const auto map = MakeMap({{"", "0"}, {"\\", "1"}, {"\\a", "2"}, {"\\\\b", "3"}, {"a\\b", "4"}});
    EXPECT_EQ(Entries(*GetSubMap(*map, "")), (Texts{"=1", "\\b=3", "a=2"}));
}

TEST(SimpleMapSubMaps, OfAPathEndingInTheSeparatorNeedASecondOne)
{
    const auto map = MakeMap({{"a\\x", "1"}, {"a\\\\y", "2"}});
    EXPECT_EQ(Entries(*GetSubMap(*map, "a\\")), Texts{"y=2"});
}

TEST(SimpleMapSubMaps, TakeAKeyThatEndsWithThePathAsTheEmptyKey)
{
    EXPECT_EQ(Entries(*GetSubMap(*MakeMap({{"a\\", "1"}}), "a")), Texts{"=1"});
}

TEST(SimpleMapSubMaps, TakeThePathOnlyAtTheFrontOfAKey)
{
    EXPECT_EQ(Entries(*GetSubMap(*MakeMap({{"b\\a\\x", "1"}, {"a\\a\\x", "2"}}), "a")), Texts{"a\\x=2"});
}

TEST(SimpleMapSubMaps, AreBatchUpdatingWithAPendingChangeWhenTheyHaveEntries)
{
    const auto map = MakeImmediateMap({{"a\\x", "1"}});
    for (const auto& [path, expected] : {std::pair{"a", Texts{"BatchUpdatingModeChanged", "Changed"}},
                                         std::pair{"b", Texts{"BatchUpdatingModeChanged"}}})
    {
        const auto below = GetSubMap(*map, path);
        EXPECT_TRUE(IsBatchUpdating(*below));
        const auto handler = MakeRef<RecordingHandler>();
        const auto watched = Query<ISimpleMap5>(below);
        watched->SubscribeChanged(handler.Get(), 0, true);
        watched->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
        watched->SetBatchUpdatingMode(false);
        EXPECT_EQ(handler->GetNames(), expected);
    }
    EXPECT_FALSE(IsBatchUpdating(*map));
}

TEST(SimpleMapSubMaps, AreCopies)
{
    const auto map = MakeMap({{"a\\x", "1"}});
    const auto below = GetSubMap(*map, "a");
    below->SetString("x", "2");
    EXPECT_EQ(TextUnder(*map, "a\\x"), "1");
    EXPECT_TRUE(map->IsUnique());
}

TEST(SimpleMapSubMaps, AreFoundInTheMiddleOfALargeMap)
{
    const auto map = MakeMap();
    for (int i = 0; i < 200'000; ++i)
        map->SetString((std::to_string(i) + "\\key").c_str(), "1");
    EXPECT_EQ(Entries(*GetSubMap(*map, "77777")), Texts{"key=1"});
    EXPECT_EQ(Entries(*GetSubMap(*map, "200000")), Texts());
}

TEST(SimpleMapSubMaps, ReportANullPathOrOut)
{
    const auto map = MakeMap({{"a\\x", "1"}});
    const auto mark = MakeMap();
    ISimpleMap* out = mark.Get();
    auto output = CaptureOutput([&] { EXPECT_EQ(map->GetSubMap(nullptr, &out), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", "Src/SimpleMap.cpp"));
    EXPECT_EQ(out, mark.Get());
    output = CaptureOutput([&] { EXPECT_EQ(map->GetSubMap("a", nullptr), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", "Src/SimpleMap.cpp"));
    output = CaptureOutput([&] { EXPECT_EQ(map->GetSubMap(nullptr, nullptr), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", "Src/SimpleMap.cpp"));
    output = CaptureOutput([&] { EXPECT_EQ(map->SetSubMap(nullptr, nullptr), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", "Src/SimpleMap.cpp"));
    output = CaptureOutput([&] { EXPECT_EQ(map->SetSubMap(nullptr, map.Get()), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", "Src/SimpleMap.cpp"));
    output = CaptureOutput([&] { EXPECT_EQ(map->SetSubMap("a", nullptr), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", "Src/SimpleMap.cpp"));
    EXPECT_EQ(Entries(*map), Texts{"a\\x=1"});
}

TEST(SimpleMapSubMaps, AreWrittenBelowThePathAndLeaveTheOtherKeys)
{
    const auto source = MakeMap({{"x", "new"}, {"y\\z", "2"}});
    const auto map = MakeMap({{"p\\old", "0"}, {"p\\x", "old"}, {"q", "1"}});
    EXPECT_EQ(map->SetSubMap("p", source.Get()), TVX_OK);
    EXPECT_EQ(Entries(*map), (Texts{"p\\old=0", "p\\x=new", "p\\y\\z=2", "q=1"}));
    EXPECT_EQ(Entries(*source), (Texts{"x=new", "y\\z=2"}));
    EXPECT_TRUE(source->IsUnique());
}

TEST(SimpleMapSubMaps, AreWrittenUnchangedForTheEmptyPath)
{
    const auto map = MakeMap();
    EXPECT_EQ(map->SetSubMap("", MakeMap({{"", "0"}, {"\\a", "1"}, {"b\\c", "2"}}).Get()), TVX_OK);
    EXPECT_EQ(Entries(*map), (Texts{"=0", "\\a=1", "b\\c=2"}));
}

TEST(SimpleMapSubMaps, WriteAnEmptyKeyAsThePathAndOneSeparator)
{
    const auto map = MakeMap();
    EXPECT_EQ(map->SetSubMap("p", MakeMap({{"", "0"}}).Get()), TVX_OK);
    EXPECT_EQ(Entries(*map), Texts{"p\\=0"});
}

TEST(SimpleMapSubMaps, AreToldOnceOutOfBatchMode)
{
    const auto map = MakeImmediateMap();
    const auto handler = MakeRef<RecordingHandler>();
    Texts seen;
    handler->action = [&](const SeenEvent& event)
    { seen.push_back(event.eventName + (IsBatchUpdating(*map) ? " on" : " off")); };
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    EXPECT_EQ(map->SetSubMap("p", MakeMap({{"x", "1"}, {"y", "2"}}).Get()), TVX_OK);
    EXPECT_EQ(seen, (Texts{"BatchUpdatingModeChanged on", "BatchUpdatingModeChanged off", "Changed off"}));
    seen.clear();
    EXPECT_EQ(map->SetSubMap("p", MakeMap().Get()), TVX_OK);
    EXPECT_EQ(seen, (Texts{"BatchUpdatingModeChanged on", "BatchUpdatingModeChanged off"}));
    EXPECT_FALSE(IsBatchUpdating(*map));
}

TEST(SimpleMapSubMaps, AreToldAndLeaveTheModeWhenAWriteFails)
{
    const auto map = MakeRef<FailingMap>();
    map->SetBatchUpdatingMode(false);
    const auto handler = MakeRef<RecordingHandler>();
    Texts seen;
    handler->action = [&](const SeenEvent& event) { seen.push_back(DescribeMapEvent(event.eventName, event.param)); };
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    EXPECT_EQ(map->SetSubMap("p", MakeMap({{"x", "1"}, {"y", "2"}, {"z", "3"}}).Get()), -42);
    EXPECT_EQ(seen, (Texts{"Mode true", "Mode false", "Changed"}));
    EXPECT_FALSE(IsBatchUpdating(*map));
    EXPECT_EQ(Entries(*map), Texts{"p\\x=1"});
    EXPECT_EQ(map->writes, 2);
}

TEST(SimpleMapSubMaps, AreHeldBackInBatchMode)
{
    const auto map = MakeMap();
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    EXPECT_EQ(map->SetSubMap("p", MakeMap({{"x", "1"}}).Get()), TVX_OK);
    EXPECT_TRUE(handler->events.empty());
    EXPECT_TRUE(IsBatchUpdating(*map));
    map->SetBatchUpdatingMode(false);
    EXPECT_EQ(handler->GetNames(), (Texts{"BatchUpdatingModeChanged", "Changed"}));
}

TEST(SimpleMapSubMaps, TakeTheMapItselfAsIfItHadBeenCopiedFirst)
{
    const auto map = MakeImmediateMap({{"a", "1"}, {"p\\a", "old"}, {"z", "3"}});
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    EXPECT_EQ(map->SetSubMap("p", map.Get()), TVX_OK);
    EXPECT_EQ(Entries(*map), (Texts{"a=1", "p\\a=1", "p\\p\\a=old", "p\\z=3", "z=3"}));
    EXPECT_EQ(handler->GetNames(), Texts{"Changed"});
    EXPECT_EQ(map->SetSubMap("", map.Get()), TVX_OK);
    EXPECT_EQ(Entries(*map), (Texts{"a=1", "p\\a=1", "p\\p\\a=old", "p\\z=3", "z=3"}));
    EXPECT_TRUE(map->IsUnique());
}

TEST(SimpleMapSubMaps, AreTakenFromAnOverriddenIterator)
{
    const auto map = MakeRef<ListedMap>();
    map->SetString("a\\own", "hidden");
    map->list = {{"b\\x", "1"}, {"a\\y", "2"}, {"c", "3"}, {"a\\x", "4"}, {"", "5"}};
    EXPECT_EQ(Entries(*GetSubMap(*map, "a")), (Texts{"x=4", "y=2"}));
}

TEST(SimpleMapSubMaps, BeginWhereAnOverriddenIteratorStands)
{
    const auto map = MakeRef<HidingMap>();
    Fill(*map, {{"a\\hidden", "0"}, {"a\\x", "1"}, {"b", "2"}});
    EXPECT_EQ(Entries(*GetSubMap(*map, "a")), Texts{"x=1"});
}

TEST(SimpleMapSubMaps, AreWrittenFromTheOverriddenIteratorOfTheSource)
{
    const auto source = MakeRef<ListedMap>();
    source->list = {{"b", "1"}, {"a", "2"}, {"b", "3"}};
    const auto map = MakeMap();
    EXPECT_EQ(map->SetSubMap("p", source.Get()), TVX_OK);
    EXPECT_EQ(Entries(*map), (Texts{"p\\a=2", "p\\b=3"}));
    EXPECT_TRUE(source->IsUnique());
}

TEST(SimpleMapSubMaps, AreWrittenFromTheOverriddenIteratorOfTheMapItself)
{
    const auto map = MakeRef<ListedMap>();
    map->SetString("own", "0");
    map->list = {{"b", "1"}};
    EXPECT_EQ(map->SetSubMap("p", map.Get()), TVX_OK);
    EXPECT_EQ(TextUnder(*map, "p\\b"), "1");
    EXPECT_EQ(TextUnder(*map, "p\\own"), "(absent)");
}

TEST(SimpleMapSubMaps, AreNotTakenWithoutAnIterator)
{
    const auto map = MakeRef<ListedMap>();
    map->list = {{"a\\x", "1"}};
    const auto mark = MakeMap();
    ISimpleMap* out = mark.Get();
    map->result = -42;  // it gives an iterator all the same
    EXPECT_EQ(map->GetSubMap("a", &out), -42);
    map->result = TVX_OK;
    map->gives = false;
    EXPECT_EQ(map->GetSubMap("a", &out), TVX_E_FAIL);
    EXPECT_EQ(out, mark.Get());
}

TEST(SimpleMapSubMaps, AreNotWrittenFromASourceWithoutAnIterator)
{
    const auto source = MakeRef<ListedMap>();
    source->list = {{"a", "2"}};
    const auto map = MakeImmediateMap({{"a", "1"}});
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    source->result = -42;  // it gives an iterator all the same
    auto output = CaptureOutput([&] { EXPECT_EQ(map->SetSubMap("p", source.Get()), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_FAILED", "Src/SimpleMap.cpp"));
    source->result = TVX_OK;
    source->gives = false;
    output = CaptureOutput([&] { EXPECT_EQ(map->SetSubMap("p", source.Get()), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", "Src/SimpleMap.cpp"));
    EXPECT_TRUE(handler->events.empty());
    EXPECT_EQ(Entries(*map), Texts{"a=1"});
}

}  // namespace
