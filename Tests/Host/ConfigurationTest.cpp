// SPDX-License-Identifier: MIT
#include "Host/Configuration.h"

#include "Host/HostString.h"
#include "Src/ConsoleLoggerPlug.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Threads/RunTogether.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tvx::host
{
namespace
{

using Texts = std::vector<std::string>;

constexpr Result Untouched = 12345;
constexpr const char Word[] = "a whole number of 32 bits";

Ref<Configuration> Make(const std::string& text, ConfigurationFormat format)
{
    const auto entries = ParseConfiguration(text, format, "file");
    EXPECT_TRUE(entries) << entries.GetError().message;
    return MakeRef<Configuration>("file", *entries);
}

// A JSON configuration with one key K.
Ref<Configuration> MakeJson(const std::string& value)
{
    return Make("{\"K\": " + value + "}", ConfigurationFormat::Json);
}

Ref<Configuration> MakeIni(const std::string& value)
{
    return Make("K=" + value, ConfigurationFormat::Ini);
}

// What a read gives: the value, or the result and whether something was written all the same.
std::string ReadBool(Configuration& configuration, const char* key = "K")
{
    bool untouchedTrue = true;
    bool untouchedFalse = false;
    const auto result = configuration.GetBool(key, &untouchedTrue, 0);
    EXPECT_EQ(configuration.GetBool(key, &untouchedFalse, 0), result);
    if (result == TVX_OK)
        return untouchedTrue && untouchedFalse ? "true" : (untouchedTrue || untouchedFalse ? "?" : "false");
    return std::to_string(result) + (untouchedTrue && !untouchedFalse ? "" : " touched");
}

std::string ReadInt(Configuration& configuration, const char* key = "K")
{
    std::int32_t value = Untouched;
    const auto result = configuration.GetInt(key, &value, 0);
    if (result == TVX_OK)
        return "value " + std::to_string(value);
    return std::to_string(result) + (value == Untouched ? "" : " touched");
}

std::string ReadString(Configuration& configuration, const char* key = "K")
{
    const auto untouched = MakeRef<HostString>("untouched");
    IString* value = untouched.Get();
    const auto result = configuration.GetString(key, &value, 0);
    if (result != TVX_OK)
        return std::to_string(result) + (value == untouched.Get() ? "" : " touched");
    const auto text = Ref<IString>::Adopt(value);
    EXPECT_TRUE(text->IsUnique());
    EXPECT_EQ(text->GetLength(), std::string(text->GetText()).size());
    return std::string("text ") + text->GetText();
}

TEST(JsonConfigurationReads, GiveValuesOfTheirType)
{
    EXPECT_EQ(ReadBool(*MakeJson("true")), "true");
    EXPECT_EQ(ReadBool(*MakeJson("false")), "false");
    EXPECT_EQ(ReadInt(*MakeJson("0")), "value 0");
    EXPECT_EQ(ReadInt(*MakeJson("-0")), "value 0");
    EXPECT_EQ(ReadInt(*MakeJson("2147483647")), "value 2147483647");
    EXPECT_EQ(ReadInt(*MakeJson("-2147483648")), "value -2147483648");
    EXPECT_EQ(ReadString(*MakeJson("\"\"")), "text ");
    EXPECT_EQ(ReadString(*MakeJson(R"("a\\\u00e4\n")")), "text a\\\xC3\xA4\n");
}

TEST(JsonConfigurationReads, RefuseEveryOtherTypeAndSayWhatWasDueAndWhatIsThere)
{
    struct Case
    {
        const char* value;
        const char* shown;
    };
    const Case cases[] = {
        {"1.5", "1.5"},
        {"1.0", "1.0"},
        {"1e2", "100.0"},
        {"2147483648", "2147483648"},
        {"-2147483649", "-2147483649"},
        {"18446744073709551616", "1.8446744073709552e+19"},
        {"null", "null"},
        {"[1]", "a list"},
        {"{}", "a section"},
        {"{\"a\": 1}", "a section"},
    };
    for (const auto& [value, shown] : cases)
    {
        const auto configuration = MakeJson(value);
        EXPECT_EQ(ReadBool(*configuration), "-1");
        EXPECT_EQ(ReadInt(*configuration), "-1");
        EXPECT_EQ(ReadString(*configuration), "-1");
        const std::string end = std::string(", but is ") + shown;
        EXPECT_EQ(configuration->GetWarnings(), (Texts{"file: \"K\" has to be true or false" + end,
                                                       "file: \"K\" has to be a whole number of 32 bits" + end,
                                                       "file: \"K\" has to be a text" + end}));
    }
}

TEST(JsonConfigurationReads, ConvertNothing)
{
    EXPECT_EQ(ReadInt(*MakeJson("\"3\"")), "-1");
    EXPECT_EQ(ReadInt(*MakeJson("true")), "-1");
    EXPECT_EQ(ReadBool(*MakeJson("1")), "-1");
    EXPECT_EQ(ReadBool(*MakeJson("\"true\"")), "-1");
    EXPECT_EQ(ReadString(*MakeJson("3")), "-1");
    EXPECT_EQ(ReadString(*MakeJson("true")), "-1");
    const auto configuration = MakeJson("\"many\"");
    EXPECT_EQ(ReadInt(*configuration), "-1");
    EXPECT_EQ(configuration->GetWarnings(),
              Texts{"file: \"K\" has to be " + std::string(Word) + ", but is the text \"many\""});
}

TEST(IniConfigurationReads, KnowTheWordsOfBools)
{
    for (const char* const word : {"true", "True", "TRUE", "yes", "Yes", "on", "ON", "1"})
        EXPECT_EQ(ReadBool(*MakeIni(word)), "true") << word;
    for (const char* const word : {"false", "fALSE", "no", "NO", "off", "Off", "0"})
        EXPECT_EQ(ReadBool(*MakeIni(word)), "false") << word;
    for (const char* const word : {"", "2", "-1", "01", "t", "truee", "ye", "on;", "\"true\"", "y", "@no"})
        EXPECT_EQ(ReadBool(*MakeIni(word)), "-1") << word;
}

TEST(IniConfigurationReads, TakeExactlyDecimalNumbers)
{
    EXPECT_EQ(ReadInt(*MakeIni("3")), "value 3");
    EXPECT_EQ(ReadInt(*MakeIni("-3")), "value -3");
    EXPECT_EQ(ReadInt(*MakeIni("010")), "value 10");
    EXPECT_EQ(ReadInt(*MakeIni("2147483647")), "value 2147483647");
    for (const char* const text : {"", "+3", "3.0", "3 ; three", "0x3", "3e0", "three", "- 3", "--3", "2147483648",
                                   "-2147483649", "99999999999999999999", "true", "\"3\"", "3,", "\xC2\xB3"})
        EXPECT_EQ(ReadInt(*MakeIni(text)), "-1") << text;
}

TEST(IniConfigurationReads, GiveEveryValueAsAText)
{
    for (const char* const text : {"", "3", "true", "a b", "\"a\"", "\xFF", "$HOME/log.txt"})
        EXPECT_EQ(ReadString(*MakeIni(text)), std::string("text ") + text);
}

TEST(IniConfigurationReads, SayWhatWasDueAndWhatIsThere)
{
    const auto configuration = MakeIni("3 ; three");
    EXPECT_EQ(ReadInt(*configuration), "-1");
    EXPECT_EQ(configuration->GetWarnings(),
              Texts{R"(file: "K" has to be a whole number of 32 bits, but is "3 ; three")"});
}

TEST(Configuration, LeavesOutUntouchedForAnAbsentKey)
{
    for (const auto& configuration : {MakeJson("{\"a\": 1}"), MakeIni("1"), MakeJson("1")})
    {
        for (const char* const key : {"k", "K\\", "\\K", "K\\b", "", "KK", "K\\a\\b"})
        {
            EXPECT_EQ(ReadBool(*configuration, key), "101") << key;
            EXPECT_EQ(ReadInt(*configuration, key), "101") << key;
            EXPECT_EQ(ReadString(*configuration, key), "-1") << key;
        }
        EXPECT_EQ(configuration->GetWarnings(), Texts());
    }
}

TEST(Configuration, RefusesNullKeysAndNullPlaces)
{
    const auto configuration = MakeIni("1");
    bool truth = false;
    std::int32_t number = Untouched;
    Ref<IString> text;
    EXPECT_EQ(configuration->GetBool(nullptr, &truth, 0), TVX_E_POINTER);
    EXPECT_EQ(configuration->GetBool("K", nullptr, 0), TVX_E_POINTER);
    EXPECT_EQ(configuration->GetInt(nullptr, &number, 0), TVX_E_POINTER);
    EXPECT_EQ(configuration->GetInt("K", nullptr, 0), TVX_E_POINTER);
    EXPECT_EQ(configuration->GetString(nullptr, text.Receive(), 0), TVX_E_POINTER);
    EXPECT_EQ(configuration->GetString("K", nullptr, 0), TVX_E_POINTER);
    EXPECT_FALSE(truth);
    EXPECT_EQ(number, Untouched);
    EXPECT_FALSE(text);
}

TEST(Configuration, ReadsTheSameWithAnyFlags)
{
    const auto configuration = MakeIni("1");
    std::int32_t number = 0;
    EXPECT_EQ(configuration->GetInt("K", &number, 0xFFFFFFFF), TVX_OK);
    EXPECT_EQ(number, 1);
}

TEST(Configuration, RefusesItsUnusedSlots)
{
    const auto configuration = MakeIni("1");
    EXPECT_EQ(configuration->UnusedSlot11(), TVX_E_FAIL);
    EXPECT_EQ(configuration->UnusedSlot14(), TVX_E_FAIL);
}

TEST(Configuration, WarnsOfEachMistakeOnce)
{
    const auto configuration = MakeIni("x");
    for (int i = 0; i < 3; ++i)
    {
        EXPECT_EQ(ReadInt(*configuration), "-1");
        EXPECT_EQ(ReadBool(*configuration), "-1");
    }
    EXPECT_EQ(configuration->GetWarnings().size(), 2U);
}

TEST(Configuration, WarnsInOneShortLineWhateverTheFileHolds)
{
    const auto entries =
        ParseConfiguration("{\"" + std::string(100000, 'k') + "\": \"\\u001b\\n" + std::string(100000, 'x') + "\"}",
                           ConfigurationFormat::Json, "file");
    const auto configuration = MakeRef<Configuration>("a\nb", *entries);
    EXPECT_EQ(ReadInt(*configuration, std::string(100000, 'k').c_str()), "-1");
    const auto warnings = configuration->GetWarnings();
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_LT(warnings[0].size(), 400U);
    EXPECT_TRUE(warnings[0].starts_with("a?b: \"kkk"));
    EXPECT_NE(warnings[0].find("the text \"??xxx"), std::string::npos);
}

TEST(Configuration, AnswersItsThreeInterfaces)
{
    const auto configuration = MakeIni("1");
    EXPECT_EQ(Query<IConfiguration>(configuration).Get(), configuration.Get());
    EXPECT_EQ(Query<IObject>(configuration).Get(), configuration.Get());
    EXPECT_EQ(Query<IObjectBase>(configuration).Get(), configuration.Get());
    EXPECT_FALSE(Query<IConfigurable>(configuration));
    EXPECT_TRUE(configuration->IsUnique());
}

TEST(Configuration, IsReadByManyThreads)
{
    const auto configuration = Make("a=1\nb=yes\nc=text", ConfigurationFormat::Ini);
    const auto read = [&](int)
    {
        for (int i = 0; i < 100; ++i)
        {
            EXPECT_EQ(ReadInt(*configuration, "a"), "value 1");
            EXPECT_EQ(ReadBool(*configuration, "b"), "true");
            EXPECT_EQ(ReadString(*configuration, "c"), "text text");
            EXPECT_EQ(ReadInt(*configuration, "c"), "-1");
            EXPECT_EQ(configuration->GetWarnings().size(), 1U);
        }
    };
    test::RunTogether(read);
}

TEST(Configuration, TellsTheModulesLoggerItsSettings)
{
    const auto logger = MakeRef<CBasicLogger>();
    logger->SetConfiguration(Make(R"({"Default": {"MinLevel": 4}, "Net": {"MinLevel": 2}, "Odd": {"MinLevel": "2"}})",
                                  ConfigurationFormat::Json)
                                 .Get());
    const auto getLevel = [&](const char* name)
    {
        std::int32_t level = 0;
        logger->GetLevel(name, &level);
        return level;
    };
    EXPECT_EQ(getLevel("Main"), 4);
    EXPECT_EQ(getLevel("Net"), 2);
    EXPECT_EQ(getLevel("Odd"), 4);
}

TEST(ConfigurationFromFile, ReadsJsonAndIni)
{
    const test::ScratchFolder folder;
    const auto json = folder.Write("a.json", "{\"Default\": {\"MinLevel\": 2}}");
    const auto ini = folder.Write("a.ini", "[Default]\nMinLevel=4\n");
    const auto plain = folder.Write("plain", "{\"Default\": {\"MinLevel\": 6}}");
    EXPECT_EQ(ReadInt(**OpenConfiguration(json), "Default\\MinLevel"), "value 2");
    EXPECT_EQ(ReadInt(**OpenConfiguration(ini), "Default\\MinLevel"), "value 4");
    EXPECT_EQ(ReadInt(**OpenConfiguration(plain), "Default\\MinLevel"), "value 6");
    EXPECT_EQ((*OpenConfiguration(json))->GetOrigin(), json.string());
    EXPECT_EQ((*OpenConfiguration(json))->GetEntries().size(), 2U);
}

TEST(ConfigurationFromFile, FailsWithTheFilesName)
{
    const test::ScratchFolder folder;
    const auto fail = [](const std::filesystem::path& file)
    {
        const auto opened = OpenConfiguration(file);
        return opened ? Error{ErrorKind::Misbehaved, "opened"} : opened.GetError();
    };
    const auto missing = folder.GetPath() / "none.json";
    EXPECT_EQ(fail(missing).kind, ErrorKind::CannotRead);
    EXPECT_EQ(fail(missing).message, missing.string() + " does not exist");
    EXPECT_EQ(fail(folder.GetPath()).message, folder.GetPath().string() + " is a folder");
    const auto empty = folder.Write("empty.json", "");
    EXPECT_EQ(fail(empty).kind, ErrorKind::BadSettings);
    EXPECT_TRUE(fail(empty).message.starts_with(empty.string() + " is no JSON configuration: "));
    const auto binary = folder.Write("binary", std::string("\x7F\x45LF\0\1\2", 7));
    EXPECT_EQ(fail(binary).message, binary.string() + " is no INI configuration: it has a NUL byte in it");
}

TEST(ConfigurationFromFile, MayBeEmptyAsIni)
{
    const test::ScratchFolder folder;
    const auto configuration = OpenConfiguration(folder.Write("empty", ""));
    ASSERT_TRUE(configuration);
    EXPECT_TRUE((*configuration)->GetEntries().empty());
    EXPECT_EQ(ReadInt(**configuration), "101");
}

}  // namespace
}  // namespace tvx::host
