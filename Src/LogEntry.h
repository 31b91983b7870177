// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
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

// The line of a log for a message, ended by a line feed. A trace has the detailed form, with scope, the last component of the
// file's path, line and the number of the calling thread; everything else the short one. A null text is printed as empty.
// Borrows the texts.
class LogLine
{
public:
    //   time  as the line shows it
    LogLine(std::string_view time, const LogEntry& entry) noexcept;
    LogLine(const LogLine&) = delete;
    LogLine& operator=(const LogLine&) = delete;

    std::size_t GetSize() const noexcept { return size_; }

    // Writes all of it.
    void CopyTo(char* text) const noexcept;

private:
    // What stands between the source and the message of a trace.
    struct Origin
    {
        std::string_view scope;
        std::string_view file;
        std::string_view line;
        std::string_view thread;
        char digits[2][10];  // of the last two; a number has no more
    };

    void MakeOrigin(const LogEntry& entry) noexcept;
    template <class Work>
    void ForEachPart(Work& work) const noexcept;

    std::string_view time_;
    std::string_view source_;
    std::string_view message_;
    std::int32_t level_;
    std::size_t size_;
    Origin origin_;  // of a trace only
};

// What stands behind the last separator of a path, of either kind on every system; "." when nothing does.
std::string_view GetLastComponent(std::string_view path) noexcept;

}  // namespace tvx
