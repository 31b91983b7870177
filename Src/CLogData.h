// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/TailAllocated.h"
#include "Interfaces/ILogger.h"
#include "Src/LogEntry.h"

namespace tvx
{

// A message with the sizes of its texts, which are looked for once.
struct LogTexts
{
    LogTexts(const LogEntry& given) noexcept;  // a message is one, too

    LogEntry entry;
    std::size_t sizes[5];  // with the terminators, 0 for one that is absent
};

// The record of one message, with its texts in one allocation. Any thread.
class CLogData final : public ClassImpl<CLogData, ILogData>, public TailAllocated
{
public:
    using Interfaces = InterfaceList<ILogData, IObject, IObjectBase>;

    explicit CLogData(const LogTexts& texts) noexcept;

    const char* GetLoggerName() override;
    std::uint32_t GetLevel() override;
    const char* GetSource() override;
    const char* GetScope() override;
    const char* GetFile() override;
    std::uint32_t GetLine() override;
    const char* GetMessage() override;

    static TailSize GetTailSize(const LogTexts& texts) noexcept;

private:
    // Copies of the texts, in the tail, with the numbers; a text that is absent stays null.
    LogEntry entry_;
};

}  // namespace tvx
