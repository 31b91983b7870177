// SPDX-License-Identifier: MIT
#pragma once

namespace tvx
{

class LogFile;

// The log files that are open in this module. When the module goes, at its unloading or at the normal end of the process, they
// write what they have buffered, and stop buffering: loggers that a host has left may log even then. Any thread.
class OpenLogFiles
{
public:
    static void Add(LogFile& file) noexcept;
    static void Remove(const LogFile& file) noexcept;

private:
    struct AtTheEnd;

    static void StopBuffering() noexcept;
};

}  // namespace tvx
