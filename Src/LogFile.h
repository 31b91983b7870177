// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <memory>
#include <string_view>

namespace tvx
{

// A file that log lines go to, emptied when opened. What the system refuses is passed over: a file that could not be opened
// takes nothing, for good; of what cannot be written, later lines go on where there is room again.
//
// Lines are buffered until they are flushed, the object dies, or the process ends normally: the C library then writes what
// is left, also when the object and even the module are gone without it. One thread at a time.
class LogFile
{
public:
    explicit LogFile(const char* path);

    bool IsOpen() const noexcept { return file_ != nullptr; }

    // Only while open.
    void Write(std::string_view line) noexcept;
    void Flush() noexcept;

private:
    struct Closing
    {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };

    std::unique_ptr<char[]> buffer_;
    std::unique_ptr<std::FILE, Closing> file_;  // goes first: closing writes from the buffer
};

}  // namespace tvx
