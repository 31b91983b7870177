// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <initializer_list>
#include <iosfwd>
#include <string>
#include <string_view>

namespace tvx::Platform
{

// The process's standard output stream, ready also while a module is being loaded into a program that has no streams.
std::ostream& GetStandardOutput();

// Writes the parts and an end of line to it and flushes it, whatever formatting the program has set there. A stream that
// cannot be written to is left alone.
void WriteLine(std::initializer_list<std::string_view> parts) noexcept;

// Keeps the process's standard output for what is written through this object: what anybody else writes there, this program
// or a module, is kept aside until this object dies, which gives standard output back. Where the system refuses, nothing is
// kept aside. One at a time.
class OutputDiversion
{
public:
    // Begins to keep aside.
    OutputDiversion();

    // Gives standard output back, without what was kept aside.
    ~OutputDiversion();
    OutputDiversion(const OutputDiversion&) = delete;
    OutputDiversion& operator=(const OutputDiversion&) = delete;

    // Gives whether everything was written.
    bool Write(std::string_view text) const;

    // What was kept aside so far, from an offset on.
    std::string Read(std::size_t from = 0) const;

private:
    int output_ = -1;
    int aside_ = -1;
};

// Whether standard output is a terminal.
bool IsStandardOutputTerminal();

}  // namespace tvx::Platform
