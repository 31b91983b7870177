// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Host/LogLine.h"
#include "Host/Outcome.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace tvx::host
{

// An open file that takes lines; its destruction closes it.
class ILineOutput
{
public:
    virtual ~ILineOutput() = default;

    // Adds the line and an end of line, without keeping anything back. Throws std::exception when the file does not take
    // all of it; the output is of no use then.
    virtual void WriteLine(const std::string& line) = 0;
};

// A handler of "MessageLogged" that adds each record to a file as one line, which stands there when OnEvent returns.
//
// A record that cannot be written is counted and given up, and nothing else is: each record tries anew, so that a file
// that was removed is made again, and a disk that has room again is used. A line that was cut off is ended first. The
// logger keeps no reference on a handler: unsubscribe before the last one goes. Any thread.
class LogSink final : public ClassImpl<LogSink, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    // Makes the line of a record, without its end.
    using Format = std::string (*)(const LoggedMessage& message);
    // Opens a file to add to it, or throws std::exception.
    using Open = std::function<std::unique_ptr<ILineOutput>(const std::filesystem::path& file)>;

    // Opens the file; throws what open throws.
    LogSink(const std::filesystem::path& file, Format format, Open open);

    // Fails: -1 when the record is lost; -7 for another event than "MessageLogged" of ILogger/1.0, or one without a record.
    Result OnEvent(IObject* sender, const char* interfaceId, const char* eventName, std::uint64_t param,
                   std::uint64_t userData) override;

    // How many records were lost so far.
    std::uint64_t GetLostCount() const;

    // Why the first record was lost, in one line that names the file; empty as long as none is.
    std::string GetFirstProblem() const;

private:
    Result Take(ILogData& record);
    Result Lose(const char* reason);
    void Write(const std::string& line);
    void OpenOutput();

    const std::filesystem::path file_;
    const Format format_;
    const Open open_;
    mutable std::mutex lock_;
    std::unique_ptr<ILineOutput> output_;  // null after a failure
    std::uint64_t lostCount_ = 0;
    std::string firstProblem_;
};

// Makes a sink.
// Fails: CannotRead when the file cannot be opened for writing.
Outcome<Ref<LogSink>> OpenLogSink(const std::filesystem::path& file, LogSink::Format format, LogSink::Open open);

}  // namespace tvx::host
