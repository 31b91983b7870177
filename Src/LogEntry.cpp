// SPDX-License-Identifier: MIT
#include "Src/LogEntry.h"

#include "Interfaces/ILogger.h"
#include "Platform/ThreadId.h"
#include "Src/String.h"

#include <charconv>
#include <initializer_list>
#include <iterator>

namespace tvx
{

namespace
{

constexpr std::string_view LevelNames[] = {"TRACE", "DEBUG", "INFO ", "WARN ", "ERROR", "FATAL"};
constexpr std::string_view NoLevelName = "     ";

std::string_view GetLevelName(std::int32_t level) noexcept
{
    const bool named = level >= LogLevel::Trace && level <= LogLevel::Fatal;
    return named ? LevelNames[level - LogLevel::Trace] : NoLevelName;
}

void Append(std::string& text, std::initializer_list<std::string_view> parts)
{
    for (const auto part : parts)
        text.append(part);
}

void AppendNumber(std::string& text, std::uint32_t number)
{
    char digits[16];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    text.append(std::begin(digits), end);
}

void AppendOrigin(std::string& text, const LogEntry& entry)
{
    Append(text, {"[", ToText(entry.scope), "] [", GetLastComponent(ToText(entry.file)), ":"});
    AppendNumber(text, entry.line);
    text.append("] [ThreadID=");
    AppendNumber(text, Platform::GetCurrentThreadId());
    text.append("] ");
}

}  // namespace

void AppendLogLine(std::string& text, std::string_view time, const LogEntry& entry)
{
    Append(text, {time, " ", GetLevelName(entry.level), " [", ToText(entry.source), "] "});
    if (entry.level == LogLevel::Trace)
        AppendOrigin(text, entry);
    Append(text, {ToText(entry.message), "\n"});
}

std::string_view GetLastComponent(std::string_view path) noexcept
{
    if (path.empty())
        return path;
    const auto last = path.substr(path.find_last_of("/\\") + 1);  // the whole path where there is no separator
    return last.empty() ? std::string_view(".") : last;
}

}  // namespace tvx
