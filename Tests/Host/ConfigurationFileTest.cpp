// SPDX-License-Identifier: MIT
#include "Host/ConfigurationFile.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace tvx::host
{
namespace
{

using namespace std::string_literals;
using Texts = std::vector<std::string>;
using Kind = ConfigurationValue::Kind;

constexpr auto Json = ConfigurationFormat::Json;
constexpr auto Ini = ConfigurationFormat::Ini;

const char* GetName(Kind kind)
{
    constexpr const char* names[] = {"bool", "number", "text", "null", "list", "section", "untyped"};
    return names[static_cast<int>(kind)];
}

// The entries of a text, or the one line of the message.
Texts Parse(const std::string& text, ConfigurationFormat format)
{
    const auto entries = ParseConfiguration(text, format, "file");
    if (!entries)
    {
        EXPECT_EQ(entries.GetError().kind, ErrorKind::BadSettings);
        EXPECT_LT(entries.GetError().message.size(), 500U);
        return {entries.GetError().message};
    }
    Texts texts;
    for (const auto& [key, value] : *entries)
        texts.push_back(key + "=" + value.text + " (" + GetName(value.kind) + ")");
    return texts;
}

void ExpectBad(const std::string& text, ConfigurationFormat format, const std::string& reason)
{
    const auto parsed = Parse(text, format);
    ASSERT_EQ(parsed.size(), 1U);
    const auto name = format == Json ? "JSON"s : "INI"s;
    const auto beginning = "file is no " + name + " configuration: " + reason;
    EXPECT_EQ(parsed[0].substr(0, beginning.size()), beginning);
}

std::string Repeat(const std::string& text, int count)
{
    std::string repeated;
    for (int i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

TEST(ConfigurationFormat, FollowsTheExtensionInAnyCase)
{
    for (const char* const name : {"a.json", "a.JSON", "b/a.ini.Json"})
        EXPECT_EQ(ChooseConfigurationFormat(name, "[Default]"), Json) << name;
    for (const char* const name : {"a.ini", "a.INI", "b.json/a.Ini"})
        EXPECT_EQ(ChooseConfigurationFormat(name, "{}"), Ini) << name;
}

TEST(ConfigurationFormat, FollowsTheTextWithoutSuchAnExtension)
{
    for (const char* const name : {"a", "a.conf", ".json.bak", "json"})
    {
        EXPECT_EQ(ChooseConfigurationFormat(name, " \r\n\t{"), Json) << name;
        EXPECT_EQ(ChooseConfigurationFormat(name, "\xEF\xBB\xBF{}"), Json) << name;
        EXPECT_EQ(ChooseConfigurationFormat(name, "; {"), Ini) << name;
        EXPECT_EQ(ChooseConfigurationFormat(name, "[{"), Ini) << name;
        EXPECT_EQ(ChooseConfigurationFormat(name, ""), Ini) << name;
        EXPECT_EQ(ChooseConfigurationFormat(name, " \n"), Ini) << name;
    }
}

TEST(JsonConfiguration, JoinsNamesByBackslashesAndKeepsTypes)
{
    EXPECT_EQ(
        Parse(R"({"Default": {"MinLevel": 2, "ToFile": true, "Filename": "a\"b", "X": null, "L": [1, {}], "F": 1.50}})",
              Json),
        (Texts{"Default= (section)", R"(Default\F=1.5 (number))", R"(Default\Filename=a"b (text))",
               R"(Default\L= (list))", R"(Default\MinLevel=2 (number))", R"(Default\ToFile=true (bool))",
               R"(Default\X=null (null))"}));
}

TEST(JsonConfiguration, MayHaveObjectsOfAnyLevelAndNoneAtAll)
{
    EXPECT_EQ(Parse("{}", Json), Texts());
    EXPECT_EQ(Parse(R"({"a": 1, "b": {"c": {"d": 2}}, "": {"": 3}})", Json),
              (Texts{"= (section)", R"(\=3 (number))", "a=1 (number)", "b= (section)", R"(b\c= (section))",
                     R"(b\c\d=2 (number))"}));
    EXPECT_EQ(Parse("\xEF\xBB\xBF {\"a\": {}} ", Json), Texts{"a= (section)"});
}

TEST(JsonConfiguration, IsOneObject)
{
    ExpectBad("", Json, "parse error at line 1, column 1: ");
    ExpectBad("[]", Json, "it holds something else than one object");
    ExpectBad("7", Json, "it holds something else than one object");
    ExpectBad("{} {}", Json, "parse error at line 1, column 4: ");
    ExpectBad("[Default]\nMinLevel=2", Json, "parse error at line 1, column 2: ");
    ExpectBad("{\"a\": 1e400}", Json, "number overflow parsing '1e400'");
}

TEST(JsonConfiguration, RefusesWhatWouldBeLost)
{
    ExpectBad(R"({"a": 1, "a": 2})", Json, R"(the name "a" stands twice in one object)");
    ExpectBad(R"({"a\\b": 1})", Json, R"(the name of "a\b" has a backslash or a NUL in it)");
    ExpectBad(R"({"a": {"b\u0000": 1}})", Json, R"(the name of "a\b?" has a backslash or a NUL in it)");
    ExpectBad(R"({"a": "b\u0000c"})", Json, R"(the text of "a" has a NUL in it)");
    ExpectBad("{}\0{}"s, Json, "it has a NUL byte in it");
    ExpectBad("{\"a\": \"\xFF\"}", Json, "parse error at line 1, column 8: ");
}

TEST(JsonConfiguration, RefusesMoreThanTwoHundredLevels)
{
    EXPECT_EQ(Parse(Repeat("{\"a\":", 200) + "1" + Repeat("}", 200), Json).size(), 200U);
    ExpectBad(Repeat("{\"a\":", 201) + "1" + Repeat("}", 201), Json, "objects and arrays stand more than 200 deep");
    ExpectBad("{\"a\":" + std::string(1000000, '['), Json, "objects and arrays stand more than 200 deep");
}

TEST(IniConfiguration, JoinsSectionAndNameByABackslash)
{
    EXPECT_EQ(Parse("MinLevel=1\n[Default]\nMinLevel=2\nToFile = yes\n[Net]\nFilename= a b.txt \n", Ini),
              (Texts{R"(Default\MinLevel=2 (untyped))", R"(Default\ToFile=yes (untyped))", "MinLevel=1 (untyped)",
                     R"(Net\Filename=a b.txt (untyped))"}));
}

TEST(IniConfiguration, SkipsCommentsBlanksLineEndsOfAnyKindAndAByteOrderMark)
{
    EXPECT_EQ(Parse("\xEF\xBB\xBF; a\r\n# b\r\n\r\n \t[ A ]\r\n\t b \t=\t c \r\nd=", Ini),
              (Texts{R"(A\b=c (untyped))", R"(A\d= (untyped))"}));
    EXPECT_EQ(Parse("", Ini), Texts());
    EXPECT_EQ(Parse("; nothing", Ini), Texts());
    EXPECT_EQ(Parse("[Empty]\n[Empty, too]\n", Ini), Texts());
}

TEST(IniConfiguration, KeepsAValueAsItIs)
{
    EXPECT_EQ(Parse("[A]\na=\"quoted\"\nb=1 ; no comment\nc=a=b\nd=\xFF\xC3\ne=\\n\n", Ini),
              (Texts{"A\\a=\"quoted\" (untyped)", "A\\b=1 ; no comment (untyped)", "A\\c=a=b (untyped)",
                     "A\\d=\xFF\xC3 (untyped)", "A\\e=\\n (untyped)"}));
}

TEST(IniConfiguration, RefusesWhatStandsTwice)
{
    ExpectBad("[A]\na=1\nb=2\na=3", Ini, "line 4: duplicate key name");
    ExpectBad("[A]\na=1\n[B]\na=1\n[A]\nb=1", Ini, "line 5: duplicate section name");
    ExpectBad("[A\\b]\nc=1\n[A]\nb\\c=2", Ini, R"(the key "A\b\c" stands there twice)");
    ExpectBad("A\\b=1\n[A]\nb=2", Ini, R"(the key "A\b" stands there twice)");
}

TEST(IniConfiguration, RefusesLinesOfNoKind)
{
    ExpectBad("[A]\na\n", Ini, "line 2: '=' character not found in line");
    ExpectBad("\n\n[A\na=1", Ini, "line 3: unmatched '['");
    ExpectBad("=1", Ini, "line 1: key expected");
    ExpectBad("{\"a\": 1}", Ini, "line 1: '=' character not found in line");
    ExpectBad("\x7F\x45LF\x01\x02", Ini, "line 1: ");
}

TEST(IniConfiguration, RefusesTextBehindASectionsBracket)
{
    ExpectBad("[A]\na=1\n[Net] MinLevel=2\n", Ini, "line 3: ");
    for (const char* const end : {"", " \t", "\r", " ; comment", "# comment"})
        EXPECT_EQ(Parse("[A]" + std::string(end) + "\na=1\n", Ini), Texts{R"(A\a=1 (untyped))"}) << end;
}

TEST(IniConfiguration, RefusesANulByteAndDropsNothingBehindIt)
{
    ExpectBad("[A]\na=1\0\nb=2"s, Ini, "it has a NUL byte in it");
    ExpectBad("\0"s, Ini, "it has a NUL byte in it");
}

TEST(IniConfiguration, TakesAMillionBytesOfAnything)
{
    EXPECT_EQ(Parse("[" + std::string(1000000, '[') + "]\na=1", Ini).size(), 1U);
    EXPECT_EQ(Parse("a=" + std::string(1000000, '='), Ini).at(0).size(), 1000000U + "a= (untyped)"s.size());
    ExpectBad(std::string(1000000, '['), Ini, "line 1: unmatched '['");
}

TEST(ConfigurationFile, NamesTheFileOfABadTextInOneLine)
{
    const auto entries = ParseConfiguration("[A]\na\x1B\n", Ini, "a\nb");
    ASSERT_FALSE(entries);
    EXPECT_TRUE(entries.GetError().message.starts_with("a?b is no INI configuration: line 2: "));
}

TEST(ConfigurationFile, ReadsOrRefusesSpoiltTexts)
{
    constexpr std::uint32_t seed = 20261121;
    std::mt19937 random(seed);
    const auto draw = [&](std::size_t limit)
    { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random); };
    const std::string bytes = "{}[]\",:=;#\\0123 tf\r\n\0\x7F\xC3\xFF"s;
    std::size_t good = 0;
    constexpr int rounds = 4000;
    for (int round = 0; round < rounds; ++round)
    {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        const bool isJson = round % 2 == 0;
        auto text = isJson ? R"({"Default": {"MinLevel": 2, "ToFile": true}, "Net": {"Filename": "a"}})"s
                           : "[Default]\nMinLevel=2\nToFile=true\n[Net]\nFilename=a\n"s;
        for (std::size_t changes = draw(3) + 1; changes > 0; --changes)
            text.replace(draw(text.size()), draw(3), 1, bytes[draw(bytes.size())]);
        const auto entries = ParseConfiguration(text, isJson ? Json : Ini, "file");
        good += entries ? 1 : 0;
        ASSERT_TRUE(entries || entries.GetError().kind == ErrorKind::BadSettings);
    }
    EXPECT_GT(good, rounds / 20U);
    EXPECT_LT(good, rounds / 20U * 19);
}

}  // namespace
}  // namespace tvx::host
