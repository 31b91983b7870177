// SPDX-License-Identifier: MIT
#include "Src/LogFile.h"

#include "Platform/SharedFile.h"
#include "Src/OpenLogFiles.h"

#include <algorithm>

namespace tvx
{

namespace
{

// Holds the lines between two flushes at the usual threshold.
constexpr std::size_t BufferSize = std::size_t{64} * 1024;

}  // namespace

LogFile::LogFile(const char* path) : file_(Platform::OpenSharedForWriting(path))
{
    if (!IsOpen())
        return;
    buffer_ = std::make_unique_for_overwrite<char[]>(BufferSize);
    OpenLogFiles::Add(*this);
}

LogFile::~LogFile()
{
    if (!IsOpen())
        return;
    OpenLogFiles::Remove(*this);
    Flush();
}

void LogFile::Write(std::string_view line) noexcept
{
    char* const room = GetRoom(line.size());
    if (room == nullptr)
    {
        std::fwrite(line.data(), 1, line.size(), file_.get());
        return;
    }
    std::copy(line.begin(), line.end(), room);
    AddFrom(room, line.size());
}

bool LogFile::WriteInPlace(const LogLine& line) noexcept
{
    char* const room = GetRoom(line.GetSize());
    if (room == nullptr)
        return false;
    line.CopyTo(room);
    AddFrom(room, line.GetSize());
    return true;
}

void LogFile::Flush() noexcept
{
    const Platform::FileLock lock(file_.get());
    if (isBuffering_.load(std::memory_order_relaxed))
        WriteBuffered();
}

// Behind what is in the buffer, which is written first where it is in the way. Null when there is no room at all.
//
// The end of the module, on another thread, first says that nothing is buffered any more and then takes what is there. Whoever
// finds the buffer empty because of that is told here not to use it. Whoever does not find it empty yet puts a line behind what
// is being written: only that line, logged at the very moment of the end, may be lost.
char* LogFile::GetRoom(std::size_t size) noexcept
{
    if (size > BufferSize - size_.load(std::memory_order_relaxed))
        Flush();
    const auto used = size_.load(std::memory_order_acquire);
    const bool isRoom = isBuffering_.load(std::memory_order_relaxed) && size <= BufferSize - used;
    return isRoom ? buffer_.get() + used : nullptr;
}

// What was written to room is in the buffer now.
void LogFile::AddFrom(const char* room, std::size_t size) noexcept
{
    size_.store(static_cast<std::size_t>(room - buffer_.get()) + size, std::memory_order_release);
}

void LogFile::StopBuffering() noexcept
{
    const Platform::FileLock lock(file_.get());
    isBuffering_.store(false, std::memory_order_relaxed);
    WriteBuffered();
}

void LogFile::WriteBuffered() noexcept
{
    if (const auto size = size_.exchange(0, std::memory_order_acq_rel))
        std::fwrite(buffer_.get(), 1, size, file_.get());
}

}  // namespace tvx
