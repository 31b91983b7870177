// SPDX-License-Identifier: MIT
#include "Src/LogFile.h"

#include "Platform/SharedFile.h"

namespace tvx
{

namespace
{

// Holds the lines between two flushes at the usual threshold.
constexpr std::size_t BufferSize = 64 * 1024;

}  // namespace

LogFile::LogFile(const char* path) : file_(Platform::OpenSharedForWriting(path))
{
    if (!file_)
        return;
    buffer_ = std::make_unique_for_overwrite<char[]>(BufferSize);
    std::setvbuf(file_.get(), buffer_.get(), _IOFBF, BufferSize);
}

void LogFile::Write(std::string_view line) noexcept
{
    std::fwrite(line.data(), 1, line.size(), file_.get());
}

void LogFile::Flush() noexcept
{
    std::fflush(file_.get());
}

}  // namespace tvx
