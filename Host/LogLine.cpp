// SPDX-License-Identifier: MIT
#include "Host/LogLine.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace tvx::host
{

namespace
{

constexpr const char* LevelNames[] = {"TRACE", "DEBUG", "INFO", "WARN", "ERROR", "FATAL"};
constexpr std::size_t LevelWidth = 5;

// Levels are signed; the record keeps their bits.
std::int32_t GetLevel(ILogData& record)
{
    return static_cast<std::int32_t>(record.GetLevel());
}

// Such as 2013-05-02T14:07:09.123Z.
std::string FormatTime(std::chrono::system_clock::time_point time)
{
    using namespace std::chrono;
    const auto moment = floor<milliseconds>(time);
    const auto day = floor<days>(moment);
    const year_month_day date(day);
    const hh_mm_ss clock(moment - day);
    char text[64];
    const int length =
        std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                      static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                      static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                      static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
    return {text, static_cast<std::size_t>(length)};
}

// With an object of the library this would be shorter; but one that is filled while memory is exhausted cannot be destroyed.
std::string QuoteJson(const char* text)
{
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

void AddMember(std::string& line, const char* name, const std::string& value)
{
    line.append(line.empty() ? "{" : ",").append("\"").append(name).append("\":").append(value);
}

void AddText(std::string& line, const char* name, const char* text)
{
    if (text != nullptr)
        AddMember(line, name, QuoteJson(text));
}

std::string LevelToJson(std::int32_t level)
{
    const char* const name = FindLevelName(level);
    return name != nullptr ? QuoteJson(name) : std::to_string(level);
}

std::string LevelToText(std::int32_t level)
{
    const char* const name = FindLevelName(level);
    std::string text = name != nullptr ? name : std::to_string(level);
    text.resize(std::max(text.size(), LevelWidth), ' ');
    return text;
}

// How a control character is shown.
std::string Escape(char character)
{
    constexpr std::string_view named = "\n\r\t";
    constexpr std::string_view names = "nrt";
    if (const auto place = named.find(character); place != std::string_view::npos)
        return {'\\', names[place]};
    char text[8];
    std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(character)));
    return text;
}

void AppendText(std::string& line, const char* text)
{
    for (const char character : std::string_view(text != nullptr ? text : ""))
    {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20 || code == 0x7F)
            line += Escape(character);
        else
            line += character;
    }
}

}  // namespace

const char* FindLevelName(std::int32_t level)
{
    const bool named = level >= LogLevel::Trace && level <= LogLevel::Fatal;
    return named ? LevelNames[level - LogLevel::Trace] : nullptr;
}

std::string FormatJsonLine(const LoggedMessage& message)
{
    auto& record = message.record;
    std::string line;
    AddText(line, "time", FormatTime(message.time).c_str());
    AddText(line, "logger", record.GetLoggerName());
    AddMember(line, "level", LevelToJson(GetLevel(record)));
    AddText(line, "source", record.GetSource());
    AddText(line, "scope", record.GetScope());
    AddText(line, "file", record.GetFile());
    AddMember(line, "line", std::to_string(record.GetLine()));
    AddMember(line, "thread", std::to_string(message.thread));
    AddText(line, "message", record.GetMessage());
    return line + "}";
}

std::string FormatTextLine(const LoggedMessage& message)
{
    auto& record = message.record;
    std::string line = FormatTime(message.time) + " " + LevelToText(GetLevel(record)) + " [";
    AppendText(line, record.GetLoggerName());
    line += "] [";
    AppendText(line, record.GetSource());
    line += "] ";
    AppendText(line, record.GetMessage());
    return line;
}

}  // namespace tvx::host
