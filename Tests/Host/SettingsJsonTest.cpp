// SPDX-License-Identifier: MIT
#include "Host/SettingsJson.h"

#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

namespace tvx::host
{
namespace
{

using test::Entries;
using test::MakeImmediateMap;
using test::MakeMap;
using test::Texts;

// The entries that a settings file gives.
Texts ReadEntries(std::string_view text)
{
    const auto map = MakeMap();
    const auto count = ReadSettings(text, "file", *map);
    if (!count)
        return {count.GetError().message};
    auto entries = Entries(*map);
    EXPECT_EQ(*count, entries.size());
    return entries;
}

std::string WriteText(ISimpleMap& map)
{
    const auto text = WriteSettings(map);
    return text ? *text : text.GetError().message;
}

// The line that a map with one entry "k" becomes.
std::string WriteValue(const std::string& text)
{
    const auto written = WriteText(*MakeMap({{"k", text.c_str()}}));
    constexpr std::string_view begin = "{\n    \"k\": ";
    constexpr std::string_view end = "\n}\n";
    EXPECT_TRUE(written.starts_with(begin) && written.ends_with(end)) << written;
    return written.substr(begin.size(), written.size() - begin.size() - end.size());
}

void ExpectBad(std::string_view text, const std::string& reason)
{
    const auto map = MakeImmediateMap({{"kept", "1"}});
    const auto handler = MakeRef<test::RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    const auto count = ReadSettings(text, "the file", *map);
    ASSERT_FALSE(count) << text.substr(0, 100);
    EXPECT_EQ(count.GetError().kind, ErrorKind::BadSettings);
    const auto message = "the file is no settings file: " + reason;
    EXPECT_EQ(count.GetError().message.substr(0, message.size()), message);
    EXPECT_LT(count.GetError().message.size(), 400U);
    EXPECT_EQ(Entries(*map), (Texts{"kept=1"}));
    EXPECT_FALSE(test::IsBatchUpdating(*map));
    EXPECT_TRUE(handler->GetNames().empty());
    map->SubscribeChanged(nullptr, 0, false);
}

void ExpectUnwritable(ISimpleMap& map, const std::string& reason)
{
    const auto text = WriteSettings(map);
    ASSERT_FALSE(text);
    EXPECT_EQ(text.GetError().kind, ErrorKind::BadSettings);
    EXPECT_EQ(text.GetError().message, "no settings file can say this map: " + reason);
}

std::string Repeat(std::string_view text, std::size_t count)
{
    std::string repeated;
    for (std::size_t i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

TEST(SettingsJson, JoinsTheNamesOfNestedObjectsByBackslashes)
{
    EXPECT_EQ(ReadEntries(R"({"b": {"y": {"z": 1}, "x": "two"}, "a": 3})"), (Texts{"a=3", R"(b\x=two)", R"(b\y\z=1)"}));
    EXPECT_EQ(ReadEntries("{}"), Texts());
}

TEST(SettingsJson, KeepsEachValueAsItsShortestText)
{
    const std::pair<const char*, const char*> values[] = {
        {"1920", "1920"},
        {"-5", "-5"},
        {"-0", "0"},
        {"-0.0", "-0.0"},
        {"1.50", "1.5"},
        {"1.0", "1.0"},
        {"1e2", "100.0"},
        {"0.1", "0.1"},
        {"1.5e-05", "1.5e-05"},
        {"18446744073709551615", "18446744073709551615"},
        {"18446744073709551616", "1.8446744073709552e+19"},
        {"-9223372036854775808", "-9223372036854775808"},
        {"true", "true"},
        {"null", "null"},
        {"[ 1, [], {\"b\": 1, \"a\": \"\\u00e4\\u0000\"} ]", "[1,[],{\"a\":\"\xC3\xA4\\u0000\",\"b\":1}]"},
        {"{ }", "{}"},
        {"[]", "[]"},
        {R"("a text")", "a text"},
        {R"("1.50")", "1.50"},
        {R"("")", ""},
        {R"("line\nbreak\\")", "line\nbreak\\"},
    };
    for (const auto& [value, text] : values)
        EXPECT_EQ(ReadEntries("{\"k\": " + std::string(value) + "}"), (Texts{"k=" + std::string(text)}));
}

TEST(SettingsJson, WritesATextThatIsExactlyTheShortestFormOfAValueAsThatValue)
{
    for (const char* const text :
         {"1920", "-5", "0", "-0.0", "1.5", "100.0", "1.5e-05", "18446744073709551615", "true", "false", "null", "{}"})
        EXPECT_EQ(WriteValue(text), text);
    EXPECT_EQ(WriteValue("[1,\"a\",{}]"), "[\n        1,\n        \"a\",\n        {}\n    ]");
}

TEST(SettingsJson, WritesEveryOtherTextAsAString)
{
    for (const char* const text :
         {"",   "1.50", "1.",   ".5",   "+1",  "01",     "-0", "1e2", "1E400", "1e400", "18446744073709551616",
          " 1", "1 ",   "0x10", "True", "nan", "[1, 2]", "[1", "{ }", "12 mm", "tr",    "-",
          "1//"})
        EXPECT_EQ(WriteValue(text), "\"" + std::string(text) + "\"");
    EXPECT_EQ(WriteValue("\"quoted\""), R"("\"quoted\"")");
    EXPECT_EQ(WriteValue(R"({"a":1})"), R"("{\"a\":1}")");  // as an object it would become another key
    EXPECT_EQ(WriteValue("\xEF\xBB\xBF"
                         "1"),
              "\"\xEF\xBB\xBF"
              "1\"");
}

TEST(SettingsJson, WritesTheLevelsOfKeysAsNestedObjects)
{
    const auto map = MakeMap({{"b\\y\\z", "1"}, {"b\\x", "two"}, {"a", "true"}});
    EXPECT_EQ(WriteText(*map), R"({
    "a": true,
    "b": {
        "x": "two",
        "y": {
            "z": 1
        }
    }
}
)");
    EXPECT_EQ(WriteText(*MakeMap()), "{}\n");
}

TEST(SettingsJson, KeepsKeysWithEmptyPartsBothWays)
{
    EXPECT_EQ(ReadEntries(R"({"": 1})"), (Texts{"=1"}));
    EXPECT_EQ(ReadEntries(R"({"": {"": 2, "x": {"": 3}}, "b": {"": 4}})"), (Texts{"\\=2", "\\x\\=3", "b\\=4"}));
    const auto map = MakeMap({{"\\a", "1"}, {"\\\\", "2"}, {"b\\", "3"}, {"c", "4"}});
    EXPECT_EQ(ReadEntries(WriteText(*map)), Entries(*map));
}

TEST(SettingsJson, RefusesAKeyWithAValueOfItsOwnAndOthersBelowIt)
{
    ExpectUnwritable(*MakeMap({{"a", "1"}, {"a\\b", "2"}}), R"("a" has a value of its own and others below it)");
    ExpectUnwritable(*MakeMap({{"a", "{}"}, {"a\\b", "2"}}), R"("a" has a value of its own and others below it)");
    // Other keys stand between the two in the order of bytes.
    ExpectUnwritable(*MakeMap({{"x\\a", "1"}, {"x\\a!", "1"}, {"x\\a\\b\\c", "2"}}),
                     R"("x\a" has a value of its own and others below it)");
    ExpectUnwritable(*MakeMap({{"", "1"}, {"\\a", "2"}}), R"("" has a value of its own and others below it)");
    EXPECT_TRUE(WriteSettings(*MakeMap({{"a", "1"}, {"a!", "1"}, {"ab\\c", "2"}})));
}

TEST(SettingsJson, AllowsTwoHundredLevelsBothWays)
{
    const auto key = Repeat("a\\", 199) + "a";
    const auto map = MakeMap({{key.c_str(), "1"}});
    EXPECT_EQ(ReadEntries(Repeat("{\"a\":", 200) + "1" + Repeat("}", 200)), (Texts{key + "=1"}));
    EXPECT_EQ(ReadEntries(WriteText(*map)), (Texts{key + "=1"}));
}

TEST(SettingsJson, RefusesMoreThanTwoHundredLevelsBothWays)
{
    const std::string reason = "objects and arrays stand more than 200 deep";
    ExpectBad(Repeat("{\"a\":", 201) + "1" + Repeat("}", 201), reason);
    ExpectBad("{\"a\":" + Repeat("[", 200) + "1" + Repeat("]", 200) + "}", reason);
    ExpectBad("{\"a\":" + Repeat("[", 1000000), reason);
    const auto key = Repeat("a\\", 200) + "a";
    ExpectUnwritable(*MakeMap({{key.c_str(), "1"}}), "a key has more than 200 levels");
}

TEST(SettingsJson, RefusesAKeyOfAMillionSeparators)
{
    const std::string key(1000000, '\\');
    ExpectUnwritable(*MakeMap({{key.c_str(), "1"}}), "a key has more than 200 levels");
    ExpectBad("{\"" + Repeat("\\\\", 1000000) + "\": 1}", "the name of \"\\\\\\");
}

TEST(SettingsJson, WritesAnArrayThatWouldStandTooDeepAsAString)
{
    const auto array = Repeat("[", 150) + Repeat("]", 150);
    const auto key = Repeat("a\\", 99) + "a";
    const auto map = MakeMap({{"flat", array.c_str()}, {key.c_str(), array.c_str()}});
    const auto text = WriteText(*map);
    EXPECT_EQ(ReadEntries(text), Entries(*map));
    EXPECT_NE(text.find("\"" + array + "\""), std::string::npos);
    EXPECT_EQ(WriteValue(std::string(1000000, '[')), "\"" + std::string(1000000, '[') + "\"");
}

TEST(SettingsJson, RefusesATextThatIsNotOneObject)
{
    const std::string other = "it holds something else than one object";
    ExpectBad("", "parse error at line 1, column 1: ");
    ExpectBad(" \n", "parse error at line 2, column 1: ");
    ExpectBad("[1]", other);
    ExpectBad("1", other);
    ExpectBad("null", other);
    ExpectBad("{} {}", "parse error at line 1, column 4: ");
    ExpectBad("{\"a\": 1", "parse error at line 1, column 8: ");
    ExpectBad("{\"a\": tru", "parse error at line 1, column 10: ");
    ExpectBad("{\"a\": 1,}", "parse error at line 1, column 9: ");
    ExpectBad("{'a': 1}", "parse error at line 1, column 2: ");
    ExpectBad("// comment\n{}", "parse error at line 1, column 1: ");
    ExpectBad("{\n\"a\": 1\n\"b\": 2}", "parse error at line 3, column 3: ");
    ExpectBad("{\"a\": 1e400}", "number overflow parsing '1e400'");
}

TEST(SettingsJson, RefusesBytesThatAreNoUtf8)
{
    ExpectBad("{\"a\": \"\xFF\"}", "parse error at line 1, column 8: ");
    ExpectBad("{\"\xC3\": 1}", "parse error at line 1, column 4: ");
    ExpectBad("{\"a\": \"\\uD800\"}", "parse error at line 1, column ");
    ExpectUnwritable(*MakeMap({{"a", "\xFF"}}), "invalid UTF-8 byte at index 0: 0xFF");
    ExpectUnwritable(*MakeMap({{"\xC3", "1"}}), "incomplete UTF-8 string; last byte: 0xC3");
}

TEST(SettingsJson, RefusesNamesThatStandTwiceInOneObject)
{
    ExpectBad(R"({"a": 1, "b": 2, "a": 3})", R"(the name "a" stands twice in one object)");
    ExpectBad(R"({"x": {"a": 1, "a": 1}})", R"(the name "a" stands twice in one object)");
    ExpectBad(R"({"x": [{"a": 1, "a": 1}]})", R"(the name "a" stands twice in one object)");
    ExpectBad(R"({"a": 1, "\u0061": 1})", R"(the name "a" stands twice in one object)");
    EXPECT_EQ(ReadEntries(R"({"a": {"a": 1}, "b": {"a": 2}})"), (Texts{R"(a\a=1)", R"(b\a=2)"}));
}

TEST(SettingsJson, RefusesWhatAKeyOrATextCannotHold)
{
    ExpectBad(R"({"a": {"b\\c": 1}})", "the name of \"a\\b\\c\" has a backslash or a NUL in it");
    ExpectBad(R"({"a\u0000": 1})", "the name of \"a?\" has a backslash or a NUL in it");
    ExpectBad(R"({"a": "b\u0000c"})", "the text of \"a\" has a NUL in it");
}

TEST(SettingsJson, RefusesANulByteAndDropsNothingBehindIt)
{
    using namespace std::string_view_literals;
    ExpectBad("{\"a\": 1}\0"sv, "it has a NUL byte in it");
    ExpectBad("{\"a\": 1}\0{\"b\": 2}"sv, "it has a NUL byte in it");
    ExpectBad("\0"sv, "it has a NUL byte in it");
    ExpectBad("{\"a\": \"b\0\"}"sv, "it has a NUL byte in it");
}

TEST(SettingsJson, ReadsAFileWithAByteOrderMark)
{
    EXPECT_EQ(ReadEntries("\xEF\xBB\xBF{\"a\": 1}"), (Texts{"a=1"}));
}

TEST(SettingsJson, CutsTheMessageOfAVeryLongText)
{
    ExpectBad("{\"a\": \"" + std::string(1000000, 'x'), "parse error at line 1, column 1000008: ");
    const auto name = std::string(1000000, 'x');
    ExpectBad("{\"" + name + "\": 1, \"" + name + "\": 1}", "the name \"xxx");
}

TEST(SettingsJson, NamesTheFileOfABadTextInOneLine)
{
    const auto map = MakeMap();
    const auto count = ReadSettings("{\"a\": \n\t!", "a\nb", *map);
    ASSERT_FALSE(count);
    EXPECT_TRUE(count.GetError().message.starts_with("a?b is no settings file: parse error at line 2, column 2: "));
    EXPECT_EQ(count.GetError().message.find('\n'), std::string::npos);
}

TEST(SettingsJson, KeepsTheOtherEntriesOfTheMap)
{
    const auto map = MakeMap({{"a", "old"}, {"b", "kept"}});
    EXPECT_EQ(*ReadSettings(R"({"a": "new"})", "file", *map), 1U);
    EXPECT_EQ(Entries(*map), (Texts{"a=new", "b=kept"}));
}

TEST(SettingsJson, TellsAMapOutOfBatchModeItsChangesOnce)
{
    const auto map = MakeImmediateMap();
    const auto handler = MakeRef<test::RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    EXPECT_TRUE(ReadSettings(R"({"a": 1, "b": {"c": 2, "d": 3}})", "file", *map));
    EXPECT_FALSE(test::IsBatchUpdating(*map));
    EXPECT_EQ(handler->GetNames(), (Texts{"BatchUpdatingModeChanged", "BatchUpdatingModeChanged", "Changed"}));
    map->SubscribeChanged(nullptr, 0, false);
}

TEST(SettingsJson, LeavesAMapInBatchModeThere)
{
    const auto map = MakeMap();
    const auto handler = MakeRef<test::RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    EXPECT_TRUE(ReadSettings(R"({"a": 1})", "file", *map));
    EXPECT_TRUE(test::IsBatchUpdating(*map));
    EXPECT_EQ(handler->GetNames(), Texts());
    map->SetBatchUpdatingMode(false);
    EXPECT_EQ(handler->GetNames(), (Texts{"BatchUpdatingModeChanged", "Changed"}));
    map->SubscribeChanged(nullptr, 0, false);
}

// Draws maps that a settings file can say.
class MapMaker
{
public:
    explicit MapMaker(std::uint32_t seed) : random_(seed) {}

    Ref<SimpleMap> Make()
    {
        auto map = MakeMap();
        entries_.clear();
        for (std::size_t i = Draw(20); i > 0; --i)
            Add(MakeKey(), MakeValue());
        for (const auto& [key, value] : entries_)
            map->SetString(key.c_str(), value.c_str());
        return map;
    }

    std::size_t Draw(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_); }

private:
    std::string MakeKey()
    {
        static constexpr const char* parts[] = {"", "a", "b", "a b", "\xC3\xA4", "\x01", "!", "~", "A"};
        std::string key = parts[Draw(std::size(parts))];
        for (std::size_t i = Draw(4); i > 0; --i)
            key.append("\\").append(parts[Draw(std::size(parts))]);
        return key;
    }

    std::string MakeValue()
    {
        static constexpr const char* values[] = {
            "",       "1",      "1.5",           "1.50",   "-0",       "true",        "null", "{}",  "[]",
            "[1,2]",  "[1, 2]", "{\"a\":1}",     "\"q\"",  "text",     "\\",          "\n",   "0x1", "1e5",
            "1e+400", "nan",    "[\"\\u0000\"]", "[[[]]]", "100000.0", "\xE2\x82\xAC"};
        if (Draw(3) > 0)
            return values[Draw(std::size(values))];
        std::string value;
        for (std::size_t i = Draw(6); i > 0; --i)
            value += "0123456789+-.eE[]{}\",: tn"[Draw(25)];
        return value;
    }

    // Leaves out a key that stands above or below another one.
    void Add(const std::string& key, const std::string& value)
    {
        for (const auto& [other, unused] : entries_)
        {
            if (key.starts_with(other + "\\") || other.starts_with(key + "\\"))
                return;
        }
        entries_[key] = value;
    }

    std::mt19937 random_;
    std::map<std::string, std::string> entries_;
};

TEST(SettingsJson, BringsRandomMapsUnchangedThroughAFile)
{
    constexpr std::uint32_t seed = 20260117;
    MapMaker maker(seed);
    for (int round = 0; round < 2000; ++round)
    {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        const auto map = maker.Make();
        const auto text = WriteSettings(*map);
        ASSERT_TRUE(text) << text.GetError().message;
        const auto copy = MakeMap();
        ASSERT_TRUE(ReadSettings(*text, "file", *copy));
        ASSERT_EQ(Entries(*copy), Entries(*map)) << *text;
        ASSERT_EQ(WriteText(*copy), *text);
    }
}

constexpr std::string_view Sample = R"({
    "Name": "Line 3, \u00e4 \"camera\"",
    "Acquisition": { "Exposure": 850, "Gain": 1.25, "Region": { "Left": -128, "": [ ] } },
    "Display": { "Overlay": true, "Palette": [ "black", { "a": null } ], "Zoom": 1.5e-05 },
    "Empty": {}
})";

// One to four random changes: a byte replaced, inserted or removed, a piece doubled, the end cut off.
std::string Mutate(std::string text, MapMaker& random)
{
    static constexpr char bytes[] = "{}[]\",:\\0123456789.eE+-tfnu \n\x00\x01\x7F\x80\xC3\xFF";
    for (std::size_t changes = random.Draw(4) + 1; changes > 0; --changes)
    {
        const auto place = random.Draw(text.size() + 1);
        const char byte = bytes[random.Draw(sizeof bytes)];
        const auto piece = text.substr(place, random.Draw(30));
        switch (random.Draw(5))
        {
        case 0: text.replace(place, 1, 1, byte); break;
        case 1: text.insert(place, 1, byte); break;
        case 2: text.erase(place, random.Draw(8)); break;
        case 3: text.insert(random.Draw(text.size() + 1), piece); break;
        default: text.resize(random.Draw(10) == 0 ? place : text.size()); break;
        }
    }
    return text;
}

TEST(SettingsJson, ReadsOrRefusesSpoiltTextsWithoutLosingAnything)
{
    constexpr std::uint32_t seed = 4711;
    MapMaker random(seed);
    std::size_t good = 0;
    for (int round = 0; round < 5000; ++round)
    {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        const auto map = MakeMap();
        const auto count = ReadSettings(Mutate(std::string(Sample), random), "file", *map);
        if (!count)
        {
            ASSERT_EQ(count.GetError().kind, ErrorKind::BadSettings);
            ASSERT_EQ(Entries(*map), Texts());
            continue;
        }
        ++good;
        ASSERT_EQ(ReadEntries(WriteText(*map)), Entries(*map));
    }
    EXPECT_GT(good, 250U);
    EXPECT_LT(good, 4750U);
}

}  // namespace
}  // namespace tvx::host
