// SPDX-License-Identifier: MIT
#include "Src/CLogData.h"

#include "Src/String.h"

#include <cstring>

namespace tvx
{

namespace
{

constexpr const char* LogEntry::*Texts[] = {&LogEntry::loggerName, &LogEntry::source, &LogEntry::scope, &LogEntry::file,
                                            &LogEntry::message};

}  // namespace

CLogData::CLogData(const LogEntry& entry) noexcept : entry_(entry)
{
    auto* tail = reinterpret_cast<char*>(this + 1);
    for (const auto text : Texts)
    {
        if (entry.*text == nullptr)
            continue;
        const auto size = std::strlen(entry.*text) + 1;
        entry_.*text = static_cast<const char*>(std::memcpy(tail, entry.*text, size));
        tail += size;
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

TailSize CLogData::GetTailSize(const LogEntry& entry) noexcept
{
    TailSize tail{0};
    for (const auto text : Texts)
        tail.bytes += ToText(entry.*text).size() + 1;
    return tail;
}

}  // namespace tvx
