// SPDX-License-Identifier: MIT
#include "Src/SimpleMap.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/CommaLocale.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <utility>

namespace
{

using namespace tvx;
using namespace tvx::test;

using IntLimits = std::numeric_limits<std::int32_t>;

// A map that keeps what is written and reports what passed through SetString.
class WatchedMap final : public SimpleMap
{
public:
    Result SetString(const char* key, const char* value) override
    {
        writes.push_back(std::string(key) + "=" + value);
        return result == TVX_OK ? SimpleMap::SetString(key, value) : result;
    }

    Texts writes;
    Result result = TVX_OK;
};

TEST(SimpleMap, IsEmptyAndBatchUpdatingWhenNew)
{
    const auto map = MakeMap();
    EXPECT_EQ(Entries(*map), Texts());
    EXPECT_TRUE(IsBatchUpdating(*map));
}

TEST(SimpleMap, KeepsCopiesOfKeyAndValue)
{
    const auto map = MakeMap();
    std::string key = "key";
    std::string value = "value";
    EXPECT_EQ(map->SetString(key.c_str(), value.c_str()), TVX_OK);
    key = "xxx";
    value = "xxxxx";
    EXPECT_EQ(Entries(*map), Texts{"key=value"});
}

TEST(SimpleMap, ReplacesTheValueOfAKeyWrittenAgain)
{
    const auto map = MakeMap({{"key", "a longer value than the next one"}, {"key", "short"}});
    EXPECT_EQ(Entries(*map), Texts{"key=short"});
}

TEST(SimpleMap, KeepsTheEmptyKeyAndTheEmptyValue)
{
    const auto map = MakeMap({{"", "value"}, {"key", ""}});
    EXPECT_EQ(TextUnder(*map, ""), "value");
    EXPECT_EQ(TextUnder(*map, "key"), "");
}

TEST(SimpleMap, TakesAValueOutOfItself)
{
    const auto map = MakeMap({{"key", "a value that is too long to lie inside a string object"}});
    Ref<ISimpleMapIterator> iterator;
    ASSERT_EQ(map->GetIterator(iterator.Receive()), TVX_OK);
    EXPECT_EQ(map->SetString(iterator->GetKey(), iterator->GetValue() + 2), TVX_OK);
    EXPECT_EQ(map->SetString(iterator->GetValue(), iterator->GetKey()), TVX_OK);
    EXPECT_EQ(Entries(*map), (Texts{"key=value that is too long to lie inside a string object",
                                    "value that is too long to lie inside a string object=key"}));
}

TEST(SimpleMap, SortsKeysByTheirBytesAndTellsCaseApart)
{
    const auto map = MakeMap({{"ab", "5"},
                              {"\xff", "8"},
                              {"a]", "4"},
                              {"a\\b", "3"},
                              {"a", "2"},
                              {"A", "1"},
                              {"\x7f", "6"},
                              {"\x80", "7"},
                              {"", "0"}});
    EXPECT_EQ(Entries(*map), (Texts{"=0", "A=1", "a=2", "a\\b=3", "a]=4", "ab=5", "\x7f=6", "\x80=7", "\xff=8"}));
}

TEST(SimpleMap, TakesKeysAsTheyAre)
{
    const auto map = MakeMap({{" key ", "blanks"}, {"a\\\\b", "double"}, {"a/b", "slash"}});
    EXPECT_EQ(TextUnder(*map, "key"), "(absent)");
    EXPECT_EQ(TextUnder(*map, "a\\b"), "(absent)");
    EXPECT_EQ(TextUnder(*map, " key "), "blanks");
    EXPECT_EQ(TextUnder(*map, "a\\\\b"), "double");
}

TEST(SimpleMap, GivesANewStringOwnedByTheCaller)
{
    const auto map = MakeMap({{"key", "value"}});
    Ref<IString> first;
    Ref<IString> second;
    EXPECT_EQ(map->GetString("key", first.Receive()), TVX_S_VALUE);
    EXPECT_EQ(map->GetString("key", second.Receive()), TVX_S_VALUE);
    EXPECT_NE(first.Get(), second.Get());
    EXPECT_EQ(first->GetRefCount(), 1U);
    map->SetString("key", "else");
    EXPECT_STREQ(first->GetText(), "value");
}

TEST(SimpleMap, LeavesOutUntouchedWhenTheKeyIsAbsent)
{
    const auto map = MakeMap({{"key", "1"}});
    const auto mark = MakeString("mark");
    IString* text = mark.Get();
    std::int32_t integer = 77;
    double real = 77.0;
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_EQ(map->GetString("ke", &text), TVX_S_NOKEY);
            EXPECT_EQ(map->GetInt("keys", &integer), TVX_S_NOKEY);
            EXPECT_EQ(map->GetDouble("", &real), TVX_S_NOKEY);
        });
    EXPECT_EQ(output, "");
    EXPECT_EQ(text, mark.Get());
    EXPECT_EQ(integer, 77);
    EXPECT_EQ(real, 77.0);
}

TEST(SimpleMap, ReportsANullKeyOrOut)
{
    const auto map = MakeMap({{"key", "1"}});
    std::int32_t integer = 77;
    double real = 77.0;
    Ref<IString> text;
    const std::function<Result()> calls[] = {
        [&] { return map->SetString(nullptr, "value"); },
        [&] { return map->SetString(nullptr, nullptr); },
        [&] { return map->SetInt(nullptr, 1); },
        [&] { return map->SetDouble(nullptr, 1.0); },
        [&] { return map->GetString(nullptr, text.Receive()); },
        [&] { return map->GetString("key", nullptr); },
        [&] { return map->GetString("absent", nullptr); },
        [&] { return map->GetInt(nullptr, &integer); },
        [&] { return map->GetInt("key", nullptr); },
        [&] { return map->GetInt("absent", nullptr); },
        [&] { return map->GetDouble(nullptr, &real); },
        [&] { return map->GetDouble("key", nullptr); },
        [&] { return map->GetDouble(nullptr, nullptr); },
    };
    for (const auto& call : calls)
    {
        const auto output = CaptureOutput([&] { EXPECT_EQ(call(), TVX_E_POINTER); });
        EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Src/SimpleMap.cpp"));
    }
    EXPECT_EQ(integer, 77);
    EXPECT_EQ(real, 77.0);
    EXPECT_EQ(Entries(*map), Texts{"key=1"});
}

TEST(SimpleMap, RefusesANullValueInSilence)
{
    const auto map = MakeImmediateMap({{"key", "1"}});
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(map->SetString("key", nullptr), TVX_E_POINTER); }), "");
    EXPECT_EQ(map->SetString("new", nullptr), TVX_E_POINTER);
    EXPECT_EQ(Entries(*map), Texts{"key=1"});
    EXPECT_TRUE(handler->events.empty());
}

TEST(SimpleMap, StoresIntegersAsDecimalText)
{
    const auto map = MakeMap();
    const std::pair<std::int32_t, const char*> cases[] = {
        {-5, "-5"}, {0, "0"}, {42, "42"}, {IntLimits::max(), "2147483647"}, {IntLimits::min(), "-2147483648"}};
    for (const auto& [value, text] : cases)
    {
        EXPECT_EQ(map->SetInt("key", value), TVX_OK);
        EXPECT_EQ(TextUnder(*map, "key"), text);
        std::int32_t back = 77;
        EXPECT_EQ(map->GetInt("key", &back), TVX_OK);
        EXPECT_EQ(back, value);
    }
}

TEST(SimpleMap, WritesAndReadsNumbersAlikeInEveryLocale)
{
    if (!CommaLocale::CanBeMade())
        GTEST_SKIP() << "this system has no localedef";
    const CommaLocale locale;
    ASSERT_TRUE(locale.IsInForce());
    const auto map = MakeMap({{"comma", "2,5"}, {"point", "2.5"}});
    double value = 0.0;
    EXPECT_EQ(map->SetDouble("written", 1234.5), TVX_OK);
    EXPECT_EQ(TextUnder(*map, "written"), "1234.5");
    EXPECT_EQ(map->GetDouble("written", &value), TVX_OK);
    EXPECT_EQ(value, 1234.5);
    EXPECT_EQ(map->GetDouble("point", &value), TVX_OK);
    EXPECT_EQ(value, 2.5);
    EXPECT_EQ(map->GetDouble("comma", &value), TVX_OK);
    EXPECT_EQ(value, 2.0);
}

TEST(SimpleMap, StoresDoublesWithSixDigits)
{
    const auto map = MakeMap();
    const std::pair<double, const char*> cases[] = {{3.14159265, "3.14159"}, {0.5, "0.5"},    {100000.0, "100000"},
                                                    {1e6, "1e+06"},          {1e-5, "1e-05"}, {-0.0, "-0"}};
    for (const auto& [value, text] : cases)
    {
        EXPECT_EQ(map->SetDouble("key", value), TVX_OK);
        EXPECT_EQ(TextUnder(*map, "key"), text);
    }
    double back = 0.0;
    EXPECT_EQ(map->SetDouble("key", 3.14159265), TVX_OK);
    EXPECT_EQ(map->GetDouble("key", &back), TVX_OK);
    EXPECT_EQ(back, 3.14159);
}

TEST(SimpleMap, ReadsTheIntegerThatATextBeginsWith)
{
    const std::pair<const char*, std::int32_t> cases[] = {{"3.14159", 3},
                                                          {"1.9", 1},
                                                          {"abc", 0},
                                                          {"", 0},
                                                          {" \t-12abc", -12},
                                                          {"+7", 7},
                                                          {"2147483648", IntLimits::max()},
                                                          {"-99999999999999999999", IntLimits::min()}};
    for (const auto& [text, value] : cases)
    {
        std::int32_t read = 77;
        EXPECT_EQ(MakeMap({{"key", text}})->GetInt("key", &read), TVX_OK);
        EXPECT_EQ(read, value) << text;
    }
}

TEST(SimpleMap, ReadsTheNumberThatATextBeginsWith)
{
    const std::pair<const char*, double> cases[] = {{"3.14159", 3.14159}, {"abc", 0.0}, {"", 0.0},
                                                    {" -1.5e2x", -150.0}, {"7", 7.0},   {"1,5", 1.0}};
    for (const auto& [text, value] : cases)
    {
        double read = 77.0;
        EXPECT_EQ(MakeMap({{"key", text}})->GetDouble("key", &read), TVX_OK);
        EXPECT_EQ(read, value) << text;
    }
}

TEST(SimpleMap, HasOnlyWholeKeys)
{
    const auto map = MakeMap({{"key\\below", "1"}});
    const std::pair<const char*, bool> cases[] = {{"key\\below", true}, {"key", false},          {"key\\", false},
                                                  {"", false},          {"key\\below\\", false}, {"KEY\\below", false}};
    for (const auto& [key, expected] : cases)
    {
        bool has = !expected;
        EXPECT_EQ(map->HasKey(key, &has), TVX_OK);
        EXPECT_EQ(has, expected) << key;
    }
}

TEST(SimpleMap, ReportsANullOutOfHasKey)
{
    const auto map = MakeMap({{"key", "1"}});
    for (const char* const key : {"key", static_cast<const char*>(nullptr)})
    {
        const auto output = CaptureOutput([&] { EXPECT_EQ(map->HasKey(key, nullptr), TVX_E_PRECONDITION); });
        EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", "Src/SimpleMap.cpp"));
    }
}

TEST(SimpleMap, RefusesANullKeyOfHasKeyInSilence)
{
    const auto map = MakeMap();
    bool has = true;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(map->HasKey(nullptr, &has), TVX_E_POINTER); }), "");
    EXPECT_TRUE(has);
}

TEST(SimpleMap, WritesEverythingThroughSetString)
{
    const auto map = MakeRef<WatchedMap>();
    EXPECT_EQ(map->SetInt("int", -5), TVX_OK);
    EXPECT_EQ(map->SetDouble("double", 0.5), TVX_OK);
    EXPECT_EQ(map->SetSubMap("path", MakeMap({{"a", "1"}, {"b", "2"}}).Get()), TVX_OK);
    EXPECT_EQ(map->writes, (Texts{"int=-5", "double=0.5", "path\\a=1", "path\\b=2"}));
}

TEST(SimpleMap, GivesTheResultOfAnOverriddenSetString)
{
    const auto map = MakeRef<WatchedMap>();
    map->result = -42;
    EXPECT_EQ(map->SetInt("int", -5), -42);
    EXPECT_EQ(map->SetDouble("double", 0.5), -42);
    EXPECT_EQ(map->SetSubMap("path", MakeMap({{"a", "1"}, {"b", "2"}}).Get()), -42);
    EXPECT_EQ(map->writes.size(), 3U);
    EXPECT_TRUE(IsBatchUpdating(*map));
}

TEST(SimpleMap, ClonesEntriesThatAreItsOwnFromThenOn)
{
    const auto map = MakeMap({{"a", "1"}, {"b", "2"}});
    Ref<ISimpleMap> clone;
    EXPECT_EQ(map->Clone(clone.Receive()), TVX_OK);
    EXPECT_NE(clone.Get(), static_cast<ISimpleMap*>(map.Get()));
    EXPECT_EQ(clone->GetRefCount(), 1U);
    EXPECT_TRUE(map->IsUnique());
    clone->SetString("a", "clone");
    map->SetString("c", "map");
    EXPECT_EQ(Entries(*clone), (Texts{"a=clone", "b=2"}));
    EXPECT_EQ(Entries(*map), (Texts{"a=1", "b=2", "c=map"}));
}

TEST(SimpleMap, ReportsANullOutOfClone)
{
    const auto map = MakeMap();
    const auto output = CaptureOutput([&] { EXPECT_EQ(map->Clone(nullptr), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", "Src/SimpleMap.cpp"));
}

TEST(SimpleMap, AnswersEveryVersionWithItsOnePrimaryFace)
{
    const auto map = MakeMap();
    ISimpleMap5* const primary = map.Get();
    for (const char* const id : {ISimpleMap5::Id, ISimpleMap4::Id, ISimpleMap3::Id, ISimpleMap2::Id, ISimpleMap1::Id,
                                 ISimpleMap::Id, IObject::Id, IObjectBase::Id})
    {
        void* face = nullptr;
        ASSERT_EQ(primary->QueryInterface(id, &face), TVX_OK) << id;
        EXPECT_EQ(face, primary) << id;
        primary->Release();
    }
    EXPECT_TRUE(map->IsUnique());
}

TEST(SimpleMap, AnswersItsOtherFacesButNoDeserializable)
{
    const auto map = MakeMap();
    ISimpleMap5* const primary = map.Get();
    EXPECT_EQ(Query<ISerializable>(primary).Get(), static_cast<ISerializable*>(map.Get()));
    EXPECT_EQ(Query<IUserDataContainer>(primary).Get(), static_cast<IUserDataContainer*>(map.Get()));
    EXPECT_EQ(Query<ISimpleMap5>(Query<IUserDataContainer>(primary)).Get(), primary);
    EXPECT_EQ(Query<IObject>(Query<IUserDataContainer>(primary)).Get(), primary);
    EXPECT_EQ(Query<IObjectBase>(Query<ISerializable>(primary)).Get(), primary);
    EXPECT_FALSE(Query<IDeserializable>(primary));
    void* face = nullptr;
    EXPECT_EQ(primary->QueryInterface("com.talvere.general.tvx.ISimpleMap/1.6", &face), TVX_E_NOINTERFACE);
    EXPECT_TRUE(map->IsUnique());
}

}  // namespace
