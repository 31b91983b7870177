// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <initializer_list>
#include <iosfwd>
#include <string_view>

namespace tvx::Platform
{

// The process's standard output stream, ready also while a module is being loaded into a program that has no streams.
std::ostream& GetStandardOutput();

// Writes the parts and an end of line to it and flushes it, whatever formatting the program has set there. A stream that
// cannot be written to is left alone.
void WriteLine(std::initializer_list<std::string_view> parts) noexcept;

// Gives the process's standard output to the returned descriptor alone: whatever is written to standard output from now on,
// by this program or by a module, goes to standard error instead. Gives -1 when the system refuses.
int DivertStandardOutput();

// Writes size bytes to a descriptor that DivertStandardOutput gave. Gives whether all were written.
bool WriteToDescriptor(int descriptor, const char* bytes, std::size_t size);

// Whether standard output is a terminal.
bool IsStandardOutputTerminal();

}  // namespace tvx::Platform
