// SPDX-License-Identifier: MIT
#include "Host/LogSink.h"

#include "Host/ModuleFile.h"
#include "Platform/ThreadId.h"

#include <exception>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

namespace tvx::host
{

namespace
{

bool IsMessageLogged(std::string_view interfaceId, std::string_view eventName)
{
    return interfaceId == ILogger::Id && eventName == "MessageLogged";
}

// Whether a file's last line has no end: it was cut off, when the disk was full or the program was killed.
bool EndsInsideLine(const std::filesystem::path& file)
{
    std::error_code failed;
    if (!std::filesystem::is_regular_file(file, failed))
        return false;
    std::ifstream stream(file, std::ios::binary);
    char last = '\n';
    stream.seekg(-1, std::ios::end).get(last);
    return last != '\n';
}

Error CannotWrite(const std::filesystem::path& file, const std::string& reason)
{
    return MakeError(ErrorKind::CannotRead, DisplayName(file) + " cannot be written: " + reason);
}

}  // namespace

// The path is kept as an absolute one: the program may change its current folder.
LogSink::LogSink(const std::filesystem::path& file, Format format, Open open)
    : file_(std::filesystem::absolute(file)),
      format_(format),
      open_(std::move(open))
{
    OpenOutput();
}

Result LogSink::OnEvent(IObject*, const char* interfaceId, const char* eventName, std::uint64_t param, std::uint64_t)
try
{
    if (param == 0 || !IsMessageLogged(interfaceId, eventName))
        return TVX_E_PRECONDITION;
    const std::lock_guard<std::mutex> guard(lock_);
    return Take(*reinterpret_cast<ILogData*>(static_cast<std::uintptr_t>(param)));
}
catch (...)  // without memory not even the reason can be kept
{
    return TVX_E_FAIL;
}

std::uint64_t LogSink::GetLostCount() const
{
    const std::lock_guard<std::mutex> guard(lock_);
    return lostCount_;
}

std::string LogSink::GetFirstProblem() const
{
    const std::lock_guard<std::mutex> guard(lock_);
    return firstProblem_;
}

Result LogSink::Take(ILogData& record)
try
{
    Write(format_({record, std::chrono::system_clock::now(), Platform::GetCurrentThreadId()}));
    return TVX_OK;
}
catch (const std::exception& failure)
{
    return Lose(failure.what());
}
catch (...)
{
    return Lose("for an unknown reason");
}

// The count goes first: for the rest there may be no memory.
Result LogSink::Lose(const char* reason)
{
    ++lostCount_;
    output_.reset();
    if (firstProblem_.empty())
        firstProblem_ = CannotWrite(file_, reason).message;
    return TVX_E_FAIL;
}

void LogSink::Write(const std::string& line)
{
    if (!output_ || !std::filesystem::exists(file_))
        OpenOutput();
    output_->WriteLine(line);
}

void LogSink::OpenOutput()
{
    output_.reset();
    const bool endsInsideLine = EndsInsideLine(file_);
    output_ = open_(file_);
    if (endsInsideLine)
        output_->WriteLine("");
}

Outcome<Ref<LogSink>> OpenLogSink(const std::filesystem::path& file, LogSink::Format format, LogSink::Open open)
try
{
    return MakeRef<LogSink>(file, format, std::move(open));
}
catch (const std::exception& failure)
{
    return CannotWrite(file, failure.what());
}

}  // namespace tvx::host
