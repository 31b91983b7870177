// SPDX-License-Identifier: MIT
#include "Platform/StandardStreams.h"

#include <cerrno>
#include <cstdio>
#include <iostream>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace tvx::Platform
{

namespace
{

// Also what was written the way of C.
void FlushStandardOutput() noexcept
try
{
    std::fflush(stdout);
    GetStandardOutput().flush();
}
catch (...)  // the program may have asked its stream to throw
{
}

// Where there is no standard output its number is free, and the next file to be opened would be taken for it. What nobody can
// write to takes its place, for good.
void OccupyStandardOutput()
{
    if (fcntl(STDOUT_FILENO, F_GETFD) >= 0)
        return;
    const int nowhere = open("/dev/null", O_RDONLY);
    if (nowhere == STDOUT_FILENO)
        return;
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
}

}  // namespace

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

OutputDiversion::OutputDiversion()
{
    FlushStandardOutput();
    OccupyStandardOutput();
    output_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    aside_ = memfd_create("output", MFD_CLOEXEC);
    if (aside_ >= 0)
        dup2(aside_, STDOUT_FILENO);
}

OutputDiversion::~OutputDiversion()
{
    FlushStandardOutput();
    dup2(output_, STDOUT_FILENO);
    close(output_);
    close(aside_);
}

bool OutputDiversion::Write(std::string_view text) const
{
    while (!text.empty())
    {
        const auto written = write(output_, text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

std::string OutputDiversion::Read(std::size_t from) const
{
    FlushStandardOutput();
    std::string text;
    char part[4096];
    for (auto size = pread(aside_, part, sizeof part, static_cast<off_t>(from)); size > 0;
         size = pread(aside_, part, sizeof part, static_cast<off_t>(from + text.size())))
        text.append(part, static_cast<std::size_t>(size));
    return text;
}

bool IsStandardOutputTerminal()
{
    return isatty(STDOUT_FILENO) == 1;
}

}  // namespace tvx::Platform
