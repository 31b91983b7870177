// SPDX-License-Identifier: MIT
#include "Src/ConsoleLoggerPlug.h"

#include "Interfaces/ILibManager.h"
#include "Platform/StandardStreams.h"
#include "Src/CLogData.h"
#include "Src/String.h"

#include <ctime>
#include <ostream>
#include <utility>

namespace tvx
{

namespace
{

constexpr const char MessageLogged[] = "MessageLogged";
constexpr const char ExportId[] = "com.talvere.general.tvx.BasicLogger/1.0";
constexpr const char MainLogger[] = "Main";

void WriteToStandardOutput(std::string_view line) noexcept
try
{
    Platform::GetStandardOutput().write(line.data(), static_cast<std::streamsize>(line.size()));
}
catch (...)  // the program may have asked its stream to throw
{
}

void WriteToFile(LoggerSettings& settings, std::string_view line) noexcept
{
    settings.stream->Write(line);
    if (++settings.linesSinceFlush < settings.logFlushThreshold)
        return;
    settings.stream->Flush();
    settings.linesSinceFlush = 0;
}

// Once for each logger name that uses the file, also when it could not be opened.
Result RegisterForCrashDumps(const std::string& filename)
{
    const auto server = CBasicLogger::GetImport<ICrashDumpServer>("CrashDumpServer");
    if (server)
        TVX_FORWARD_FAILURE(server->AddFile(filename.c_str(), "Log File"));
    return TVX_OK;
}

}  // namespace

Result CBasicLogger::Log(const char* loggerName, std::int32_t level, const char* source, const char* scope,
                         const char* file, std::uint32_t line, const char* message)
try
{
    auto& settings = GetSettings(loggerName);
    const LogEntry entry{loggerName, level, source, scope, file, line, message};
    const auto record = MakeRef<CLogData>(entry);
    if (settings.Takes(level))
        Write(settings, entry);
    FireMessageLogged(record.Get());
    return TVX_OK;
}
catch (...)  // without memory the message is lost, and whoever logs goes on
{
    return TVX_OK;
}

Result CBasicLogger::SetLevel(const char* loggerName, std::int32_t level)
try
{
    GetSettings(loggerName).minLevel = level;
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

Result CBasicLogger::GetLevel(const char* loggerName, std::int32_t* out)
try
{
    TVX_RETURN_EPOINTER_IF_NULL(out);
    *out = GetSettings(loggerName).minLevel;
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

void CBasicLogger::AdviseMessageLogged(IEventHandler* handler, std::uint64_t cookie, bool add)
{
    Connect(ILogger::Id, MessageLogged, handler, cookie, add);
}

void CBasicLogger::FireMessageLogged(ILogData* record)
{
    Fire(ILogger::Id, MessageLogged, static_cast<ILogger*>(this), ToParameter(record));
}

Result CBasicLogger::OnConfigure(IConfiguration* config)
try
{
    TVX_RETURN_EPOINTER_IF_NULL(config);
    auto defaults = defaults_;
    ReadSection(*config, "Default", defaults);
    defaults_ = std::move(defaults);
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

Result CBasicLogger::OnImportsSet()
{
    const auto manager = GetImport<ILibManager>("LibManager");
    std::int32_t level = LogLevel::Info;
    if (!manager || TVX_FAILED(GetLevel(MainLogger, &level)) || level >= LogLevel::Info)
        return TVX_OK;
    Ref<IString> plugins;
    if (TVX_FAILED(manager->GetInstalledPluginsVersions(plugins.Receive())) || !plugins)
        return TVX_OK;
    for (const char* const message : {"Printing installed plugins version...", plugins->GetText()})
        Log(MainLogger, LogLevel::Debug, ExportId, nullptr, nullptr, 0, message);
    return TVX_OK;
}

LoggerSettings& CBasicLogger::GetSettings(const char* loggerName)
{
    const auto name = ToText(loggerName);
    const auto found = settings_.find(name);
    return found == settings_.end() ? MakeSettings(name) : found->second;
}

// The settings stand under their name before the crash-dump server is called, which may log in its turn.
LoggerSettings& CBasicLogger::MakeSettings(std::string_view loggerName)
{
    auto made = defaults_;
    if (auto* const config = GetConfiguration())
        ReadSection(*config, loggerName, made);
    if (made.toFile)
        made.stream = GetStream(made.filename);
    auto& settings = settings_.insert_or_assign(std::string(loggerName), std::move(made)).first->second;
    if (settings.toFile)
        static_cast<void>(RegisterForCrashDumps(settings.filename));
    return settings;
}

// A file is opened once; one that could not be stays closed.
std::shared_ptr<LogFile> CBasicLogger::GetStream(const std::string& filename)
{
    auto& stream = files_[filename];
    if (!stream)
        stream = std::make_shared<LogFile>(filename.c_str());
    return stream;
}

void CBasicLogger::Write(LoggerSettings& settings, const LogEntry& entry) noexcept
try
{
    auto line = std::exchange(line_, {});  // a stream may log in its turn
    line.clear();
    AppendLogLine(line, timeStamp_.Get(std::time(nullptr)), entry);
    if (settings.toStdOut)
        WriteToStandardOutput(line);
    if (settings.HasOpenFile())
        WriteToFile(settings, line);
    line_ = std::move(line);
}
catch (...)  // want of memory
{
}

}  // namespace tvx
