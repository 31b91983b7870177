// SPDX-License-Identifier: MIT
#include "Src/CLogData.h"

#include <cstring>
#include <iterator>
#include <numeric>

namespace tvx
{

namespace
{

constexpr const char* LogEntry::*Texts[] = {&LogEntry::loggerName, &LogEntry::source, &LogEntry::scope, &LogEntry::file,
                                            &LogEntry::message};

}  // namespace

LogTexts::LogTexts(const LogEntry& given) noexcept : entry(given)
{
    for (std::size_t at = 0; at < std::size(Texts); ++at)
        sizes[at] = entry.*Texts[at] == nullptr ? 0 : std::strlen(entry.*Texts[at]) + 1;
}

CLogData::CLogData(const LogTexts& texts) noexcept : entry_(texts.entry)
{
    auto* tail = reinterpret_cast<char*>(this + 1);
    for (std::size_t at = 0; at < std::size(Texts); ++at)
    {
        if (texts.sizes[at] == 0)
            continue;
        entry_.*Texts[at] = static_cast<const char*>(std::memcpy(tail, texts.entry.*Texts[at], texts.sizes[at]));
        tail += texts.sizes[at];
    }
}

const char* CLogData::GetLoggerName()
{
    return entry_.loggerName;
}

std::uint32_t CLogData::GetLevel()
{
    return static_cast<std::uint32_t>(entry_.level);
}

const char* CLogData::GetSource()
{
    return entry_.source;
}

const char* CLogData::GetScope()
{
    return entry_.scope;
}

const char* CLogData::GetFile()
{
    return entry_.file;
}

std::uint32_t CLogData::GetLine()
{
    return entry_.line;
}

const char* CLogData::GetMessage()
{
    return entry_.message;
}

TailSize CLogData::GetTailSize(const LogTexts& texts) noexcept
{
    return {std::accumulate(std::begin(texts.sizes), std::end(texts.sizes), std::size_t{0})};
}

}  // namespace tvx
