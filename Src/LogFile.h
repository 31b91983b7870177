// SPDX-License-Identifier: MIT
#pragma once

#include "Src/LogEntry.h"

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>

namespace tvx
{

// A file that log lines go to, emptied when opened. What the system refuses is passed over: a file that could not be opened
// takes nothing, for good; of what cannot be written, later lines go on where there is room again.
//
// Lines are buffered until they are flushed, the object dies, the module is unloaded, or the process ends normally; at the
// last two also when the object stays behind, which buffers nothing from then on. One thread at a time, but for the end.
class LogFile
{
public:
    explicit LogFile(const char* path);
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    bool IsOpen() const noexcept { return file_ != nullptr; }

    // Only while open.
    void Write(std::string_view line) noexcept;

    // Puts line together in the buffer, and gives true, when it has room there; otherwise nothing happens. Only while open.
    bool WriteInPlace(const LogLine& line) noexcept;

    void Flush() noexcept;

private:
    friend class OpenLogFiles;

    struct Closing
    {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };

    char* GetRoom(std::size_t size) noexcept;
    void AddFrom(const char* room, std::size_t size) noexcept;
    void StopBuffering() noexcept;
    void WriteBuffered() noexcept;

    std::unique_ptr<std::FILE, Closing> file_;
    std::unique_ptr<char[]> buffer_;
    std::atomic<std::size_t> size_{0};  // of what is in the buffer and has to be written
    std::atomic<bool> isBuffering_{true};
    LogFile* next_ = nullptr;  // among those that are open
};

}  // namespace tvx
