// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tvx
{

// One message as it is passed to the logger: the texts are borrowed and may be null.
struct LogEntry
{
    const char* loggerName;
    std::int32_t level;
    const char* source;
    const char* scope;
    const char* file;
    std::uint32_t line;
    const char* message;
};

// Appends the line of a log for entry, ended by a line feed. A trace has the detailed form, with scope, the last component of
// the file's path, line and the number of the calling thread; everything else the short one. A null text is printed as empty.
//   time  as the line shows it
void AppendLogLine(std::string& text, std::string_view time, const LogEntry& entry);

// What stands behind the last separator of a path, of either kind on every system; "." when nothing does.
std::string_view GetLastComponent(std::string_view path) noexcept;

}  // namespace tvx
