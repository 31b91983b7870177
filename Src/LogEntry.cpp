// SPDX-License-Identifier: MIT
#include "Src/LogEntry.h"

#include "Interfaces/ILogger.h"
#include "Platform/ThreadId.h"
#include "Src/String.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace tvx
{

namespace
{

using namespace std::string_view_literals;

constexpr std::size_t LevelNameSize = 5;
constexpr char LevelNames[][LevelNameSize + 1] = {"     ", "TRACE", "DEBUG", "INFO ", "WARN ", "ERROR", "FATAL"};

// All of one size, unknown ones as blanks.
std::string_view GetLevelName(std::int32_t level) noexcept
{
    const bool named = level >= LogLevel::Trace && level <= LogLevel::Fatal;
    return {LevelNames[named ? level : 0], LevelNameSize};
}

// A function object for parts of a line: adds up their sizes.
struct Measure
{
    std::size_t size = 0;

    void operator()(std::string_view part) noexcept { size += part.size(); }
};

// Another one: copies them.
struct Copy
{
    char* to;

    void operator()(std::string_view part) noexcept { to = std::copy_n(part.data(), part.size(), to); }
};

// The number is less than 2^32; gives its digits in room.
std::string_view GetDigits(std::uint32_t number, char (&room)[10]) noexcept
{
    const auto* const end = std::to_chars(std::begin(room), std::end(room), number).ptr;
    return {room, static_cast<std::size_t>(end - room)};
}

}  // namespace

// The sizes of most parts are known to the compiler.
template <class Work>
void LogLine::ForEachPart(Work& work) const noexcept
{
    work(time_);
    work(" ");
    work(GetLevelName(level_));
    work(" [");
    work(source_);
    work("] ");
    if (level_ == LogLevel::Trace)
    {
        for (const auto part : {"["sv, origin_.scope, "] ["sv, origin_.file, ":"sv, origin_.line, "] [ThreadID="sv,
                                origin_.thread, "] "sv})
            work(part);
    }
    work(message_);
    work("\n");
}

LogLine::LogLine(std::string_view time, const LogEntry& entry) noexcept
    : time_(time),
      source_(ToText(entry.source)),
      message_(ToText(entry.message)),
      level_(entry.level)
{
    if (level_ == LogLevel::Trace)
        MakeOrigin(entry);
    Measure measure;
    ForEachPart(measure);
    size_ = measure.size;
}

void LogLine::CopyTo(char* text) const noexcept
{
    Copy copy{text};
    ForEachPart(copy);
}

void LogLine::MakeOrigin(const LogEntry& entry) noexcept
{
    origin_.scope = ToText(entry.scope);
    origin_.file = GetLastComponent(ToText(entry.file));
    origin_.line = GetDigits(entry.line, origin_.digits[0]);
    origin_.thread = GetDigits(Platform::GetCurrentThreadId(), origin_.digits[1]);
}

std::string_view GetLastComponent(std::string_view path) noexcept
{
    if (path.empty())
        return path;
    const auto last = path.substr(path.find_last_of("/\\") + 1);  // the whole path where there is no separator
    return last.empty() ? std::string_view(".") : last;
}

}  // namespace tvx
