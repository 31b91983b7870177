// SPDX-License-Identifier: MIT
#include "Platform/StandardStreams.h"

#include <cerrno>
#include <iostream>

#include <unistd.h>

namespace tvx::Platform
{

std::ostream& GetStandardOutput()
{
    // A module's own static objects may be the first to write, before those of this file are made.
    static const std::ios_base::Init streams;
    return std::cout;
}

void WriteLine(std::initializer_list<std::string_view> parts) noexcept
try
{
    auto& output = GetStandardOutput();
    for (const auto part : parts)
        output.write(part.data(), static_cast<std::streamsize>(part.size()));
    output.put('\n').flush();
}
catch (...)  // the program may have asked its stream to throw
{
}

int DivertStandardOutput()
{
    GetStandardOutput().flush();
    const int kept = dup(STDOUT_FILENO);
    if (kept < 0 || dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        return -1;
    return kept;
}

bool WriteToDescriptor(int descriptor, const char* bytes, std::size_t size)
{
    while (size > 0)
    {
        const auto written = write(descriptor, bytes, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool IsStandardOutputTerminal()
{
    return isatty(STDOUT_FILENO) == 1;
}

}  // namespace tvx::Platform
