// SPDX-License-Identifier: MIT
#include "Host/LogLine.h"

#include "Helpers/Ref.h"
#include "Src/CLogData.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tvx::host
{
namespace
{

using namespace std::chrono_literals;

// 2013-05-02 14:07:09.123 UTC, and some microseconds.
constexpr std::chrono::system_clock::time_point Moment{std::chrono::microseconds(1367503629123999)};

constexpr LogEntry Entry{"Main", LogLevel::Info, "Net", "Connect", "src/Socket.cpp", 120, "ready"};

std::string ToJson(const LogEntry& entry, std::chrono::system_clock::time_point time = Moment)
{
    return FormatJsonLine({*MakeRef<CLogData>(entry), time, 4412});
}

std::string ToText(const LogEntry& entry, std::chrono::system_clock::time_point time = Moment)
{
    return FormatTextLine({*MakeRef<CLogData>(entry), time, 4412});
}

LogEntry WithLevel(std::int32_t level)
{
    auto entry = Entry;
    entry.level = level;
    return entry;
}

LogEntry WithMessage(const char* message)
{
    auto entry = Entry;
    entry.message = message;
    return entry;
}

// The time of a moment so far from the beginning of 1970.
std::string TimeAt(std::chrono::milliseconds moment)
{
    const auto line = ToText(Entry, std::chrono::system_clock::time_point(moment));
    return line.substr(0, line.find(' '));
}

TEST(JsonLine, TellsEveryFieldInItsOrder)
{
    EXPECT_EQ(ToJson(Entry),
              R"({"time":"2013-05-02T14:07:09.123Z","logger":"Main","level":"INFO","source":"Net","scope":"Connect",)"
              R"("file":"src/Socket.cpp","line":120,"thread":4412,"message":"ready"})");
}

TEST(JsonLine, LeavesOutAbsentTextsButNotEmptyOnes)
{
    EXPECT_EQ(ToJson({nullptr, LogLevel::Info, nullptr, nullptr, nullptr, 0, nullptr}),
              R"({"time":"2013-05-02T14:07:09.123Z","level":"INFO","line":0,"thread":4412})");
    EXPECT_EQ(ToJson({"", LogLevel::Info, "", "", "", 4294967295U, ""}),
              R"({"time":"2013-05-02T14:07:09.123Z","logger":"","level":"INFO","source":"","scope":"","file":"",)"
              R"("line":4294967295,"thread":4412,"message":""})");
}

TEST(JsonLine, NamesLevelsAndNumbersTheOthers)
{
    const auto level = [](std::int32_t number) { return nlohmann::json::parse(ToJson(WithLevel(number)))["level"]; };
    EXPECT_EQ(level(LogLevel::Trace), "TRACE");
    EXPECT_EQ(level(LogLevel::Debug), "DEBUG");
    EXPECT_EQ(level(LogLevel::Info), "INFO");
    EXPECT_EQ(level(LogLevel::Warn), "WARN");
    EXPECT_EQ(level(LogLevel::Error), "ERROR");
    EXPECT_EQ(level(LogLevel::Fatal), "FATAL");
    EXPECT_EQ(level(0), 0);
    EXPECT_EQ(level(7), 7);
    EXPECT_EQ(level(-1), -1);
    EXPECT_EQ(level(INT32_MIN), INT32_MIN);
}

TEST(JsonLine, IsOneLineWhateverTheTextsHold)
{
    std::string everything;
    for (int code = 1; code < 256; ++code)
        everything += static_cast<char>(code);
    const char* const text = everything.c_str();
    const auto line = ToJson({text, LogLevel::Info, text, text, text, 0, text});
    for (const char character : line)
        EXPECT_GE(static_cast<unsigned char>(character), 0x20);
    EXPECT_EQ(nlohmann::json::parse(line).size(), 9U);
}

TEST(JsonLine, GivesTextsBackUnchangedWhenTheyAreUtf8)
{
    const char* const text = "a \"quoted\" \\ \x01\x1F\x7F\t\r\n\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80";
    EXPECT_EQ(nlohmann::json::parse(ToJson(WithMessage(text)))["message"], text);
}

TEST(JsonLine, ReplacesBytesThatAreNoUtf8)
{
    const auto message = [](const char* text) { return nlohmann::json::parse(ToJson(WithMessage(text)))["message"]; };
    EXPECT_EQ(message("a\xFFz"), "a\xEF\xBF\xBDz");
    EXPECT_EQ(message("\xC3"), "\xEF\xBF\xBD");
    EXPECT_EQ(message("\xC3("), "\xEF\xBF\xBD(");
}

TEST(TextLine, TellsTimeLevelLoggerSourceAndMessage)
{
    EXPECT_EQ(ToText(Entry), "2013-05-02T14:07:09.123Z INFO  [Main] [Net] ready");
    EXPECT_EQ(ToText(WithLevel(LogLevel::Fatal)), "2013-05-02T14:07:09.123Z FATAL [Main] [Net] ready");
}

TEST(TextLine, ShowsALevelWithoutANameAsItsNumber)
{
    EXPECT_EQ(ToText(WithLevel(7)), "2013-05-02T14:07:09.123Z 7     [Main] [Net] ready");
    EXPECT_EQ(ToText(WithLevel(0)), "2013-05-02T14:07:09.123Z 0     [Main] [Net] ready");
    EXPECT_EQ(ToText(WithLevel(-123456)), "2013-05-02T14:07:09.123Z -123456 [Main] [Net] ready");
}

TEST(TextLine, ShowsAbsentTextsAsEmpty)
{
    EXPECT_EQ(ToText({nullptr, LogLevel::Warn, nullptr, nullptr, nullptr, 0, nullptr}),
              "2013-05-02T14:07:09.123Z WARN  [] [] ");
}

TEST(TextLine, IsOneLineWhateverTheTextsHold)
{
    EXPECT_EQ(ToText({"a\nb", LogLevel::Warn, "c\rd", nullptr, nullptr, 0, "e\t\x01\x1B\x7F\xFF\xC3\xA4\\n"}),
              "2013-05-02T14:07:09.123Z WARN  [a\\nb] [c\\rd] e\\t\\x01\\x1B\\x7F\xFF\xC3\xA4\\n");
}

TEST(LogLine, ShowsTheTimeInUtcToTheMillisecondBegun)
{
    EXPECT_EQ(TimeAt(0ms), "1970-01-01T00:00:00.000Z");
    EXPECT_EQ(TimeAt(-1ms), "1969-12-31T23:59:59.999Z");
    EXPECT_EQ(TimeAt(951868799999ms), "2000-02-29T23:59:59.999Z");
    EXPECT_EQ(TimeAt(4107542400000ms), "2100-03-01T00:00:00.000Z");
}

}  // namespace
}  // namespace tvx::host
