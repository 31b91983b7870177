// SPDX-License-Identifier: MIT
#include "Src/ConsoleLoggerPlug.h"

#include "Interfaces/ILibManager.h"
#include "Platform/StandardStreams.h"
#include "Src/CLogData.h"
#include "Src/String.h"

#include <cstring>
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

// Reads text up to where it ends or differs.
bool IsText(const char* expected, const char* text) noexcept
{
    return text == nullptr ? *expected == '\0' : std::strcmp(expected, text) == 0;
}

void WriteToStandardOutput(std::string_view line) noexcept
try
{
    Platform::GetStandardOutput().write(line.data(), static_cast<std::streamsize>(line.size()));
}
catch (...)  // the program may have asked its stream to throw
{
}

// One that was written to the file.
void CountLine(LoggerSettings& settings) noexcept
{
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

inline CBasicLogger::NamedSettings::value_type* CBasicLogger::FindLastUsed(const char* loggerName) const noexcept
{
    auto* const used = lastUsed_[GetPlace(loggerName)].load(std::memory_order_relaxed);
    return used != nullptr && IsText(used->first.c_str(), loggerName) ? used : nullptr;
}

// Most messages are filtered, and most come under a name that was used before: nothing is called then.
Result CBasicLogger::Log(const char* loggerName, std::int32_t level, const char* source, const char* scope,
                         const char* file, std::uint32_t line, const char* message)
{
    auto* const used = FindLastUsed(loggerName);
    if (used == nullptr)
        return LogUnderOtherName({loggerName, level, source, scope, file, line, message});
    if (!used->second.Takes(level) && !MustFire())
        return TVX_OK;
    return Take(used->second, {loggerName, level, source, scope, file, line, message});
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

// Whoever logs mostly passes the same few names from the same places. A name that was passed from there before need not be
// looked up, but it may be another text by now.
LoggerSettings& CBasicLogger::GetSettings(const char* loggerName)
{
    if (auto* const used = FindLastUsed(loggerName))
        return used->second;
    auto& found = FindSettings(ToText(loggerName));
    lastUsed_[GetPlace(loggerName)].store(&found, std::memory_order_relaxed);
    return found.second;
}

CBasicLogger::NamedSettings::value_type& CBasicLogger::FindSettings(std::string_view loggerName)
{
    const auto found = settings_.find(loggerName);
    return found == settings_.end() ? MakeSettings(loggerName) : *found;
}

// The settings stand under their name before the crash-dump server is called, which may log in its turn.
CBasicLogger::NamedSettings::value_type& CBasicLogger::MakeSettings(std::string_view loggerName)
{
    auto made = defaults_;
    if (auto* const config = GetConfiguration())
        ReadSection(*config, loggerName, made);
    if (made.toFile)
        made.stream = GetStream(made.filename);
    auto& entry = *settings_.insert_or_assign(std::string(loggerName), std::move(made)).first;
    if (entry.second.toFile)
        static_cast<void>(RegisterForCrashDumps(entry.second.filename));
    return entry;
}

// Whether anybody would see the event: a subscriber, or a derived class with a FireMessageLogged of its own. If not, neither
// the record nor the call is missed.
bool CBasicLogger::MustFire() const noexcept
{
    return HasSubscribers() || Platform::GetTable(*this) != ownTable_;
}

// A file is opened once; one that could not be stays closed.
std::shared_ptr<LogFile> CBasicLogger::GetStream(const std::string& filename)
{
    auto& stream = files_[filename];
    if (!stream)
        stream = std::make_shared<LogFile>(filename.c_str());
    return stream;
}

Result CBasicLogger::LogUnderOtherName(const LogEntry& entry) noexcept
try
{
    return Take(GetSettings(entry.loggerName), entry);
}
catch (...)  // without memory the message is lost, and whoever logs goes on
{
    return TVX_OK;
}

Result CBasicLogger::Take(LoggerSettings& settings, const LogEntry& entry) noexcept
try
{
    Ref<CLogData> record = MustFire() ? MakeRef<CLogData>(LogTexts(entry)) : nullptr;
    if (settings.Takes(entry.level))
        Write(settings, entry);
    if (!record && MustFire())  // somebody has subscribed while the line was written
        record = MakeRef<CLogData>(LogTexts(entry));
    if (record)
        FireMessageLogged(record.Get());
    return TVX_OK;
}
catch (...)  // without memory the message is lost, and whoever logs goes on
{
    return TVX_OK;
}

void CBasicLogger::Write(LoggerSettings& settings, const LogEntry& entry) noexcept
try
{
    const LogLine line(timeStamp_.Get(std::time(nullptr)), entry);
    if (!settings.toStdOut && settings.stream->WriteInPlace(line))
    {
        CountLine(settings);
        return;
    }
    auto text = std::exchange(text_, {});  // a stream may log in its turn
    text.resize(line.GetSize());
    line.CopyTo(text.data());
    if (settings.toStdOut)
        WriteToStandardOutput(text);
    if (settings.HasOpenFile())
    {
        settings.stream->Write(text);
        CountLine(settings);
    }
    text_ = std::move(text);
}
catch (...)  // want of memory
{
}

}  // namespace tvx
