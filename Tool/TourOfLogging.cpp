// SPDX-License-Identifier: MIT
#include "Host/Configuration.h"
#include "Host/CrashDumpServer.h"
#include "Host/LogLine.h"
#include "Host/TextFile.h"
#include "Tool/Narration.h"
#include "Tool/TemporaryFolder.h"
#include "Tool/Tour.h"

#include <sstream>

namespace tvx::tool
{

namespace
{

constexpr const char LoggerExport[] = "com.talvere.general.tvx.BasicLogger/1.0";
constexpr const char CrashDumpContract[] = "com.talvere.general.tvx.contract.CrashDumpServer/1.0";

// A record keeps null for a text that was given as null, and not every level has a name.
const char* ToShow(const char* text)
{
    return text == nullptr ? "(none)" : text;
}

// Says every message, also those that no output takes.
class MessageNarrator final : public ClassImpl<MessageNarrator, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject*, const char*, const char* eventName, std::uint64_t param, std::uint64_t) override
    {
        if (param == 0)
            return TVX_E_PRECONDITION;
        auto& record = *reinterpret_cast<ILogData*>(param);
        const char* const level = host::FindLevelName(static_cast<std::int32_t>(record.GetLevel()));
        Say("  event  \"", eventName, "\" ", ToShow(level), " of ", ToShow(record.GetLoggerName()), ": ",
            ToShow(record.GetMessage()));
        return TVX_OK;
    }
};

std::string MakeConfiguration(const std::filesystem::path& log)
{
    return "[Main]\nMinLevel=3\n[Net]\nMinLevel=1\nToStdOut=false\nToFile=true\nLogFlushThreshold=1\nFilename=" +
           log.string() + "\n";
}

void LogMessages(ILogger& logger)
{
    const auto narrator = MakeRef<MessageNarrator>();
    logger.AdviseMessageLogged(narrator.Get(), 0, true);
    logger.Log("Main", LogLevel::Info, "Tour", "LogMessages", "Tour.cpp", 1, "on standard output");
    logger.Log("Main", LogLevel::Debug, "Tour", "LogMessages", "Tour.cpp", 2, "below the minimum, so heard alone");
    logger.Log("Net", LogLevel::Trace, "Socket", "Connect", "src/Socket.cpp", 120, "in the file, with all its details");
    logger.Log("Net", LogLevel::Warn, "Socket", "Connect", "src/Socket.cpp", 121, "in the file, in short");
    logger.AdviseMessageLogged(narrator.Get(), 0, false);
}

void SayLines(const std::string& text)
{
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        Say("    ", line);
}

}  // namespace

bool Tour::UseLogger()
{
    OpenChapter("Log. What is written, and where, is said by the configuration for each logger name.");
    const TemporaryFolder folder;
    const auto log = folder.GetPath() / "net.log";
    const auto server = MakeRef<host::CrashDumpServer>();
    manager_->Offer(CrashDumpContract, Ref<IObjectBase>(server));
    if (!ConfigureLogger(folder.GetPath() / "logging.ini", MakeConfiguration(log)))
        return false;
    const auto logger = manager_->GetExportAs<ILogger>(LoggerExport);
    if (!logger)
        return Fail(logger.GetError());
    LogMessages(**logger);
    for (const auto& file : server->GetFiles())
        Say("  goes along with a crash report: ", file.path, " (", file.label, ")");
    return SayFile(log);
}

// Before the logger is asked for: a logger name keeps the settings of its first use.
bool Tour::ConfigureLogger(const std::filesystem::path& file, const std::string& text)
{
    const auto written = host::WriteTextFile(file, text);
    if (!written)
        return Fail(written.GetError());
    const auto configuration = host::OpenConfiguration(file);
    if (!configuration)
        return Fail(configuration.GetError());
    manager_->Configure(Ref<IConfiguration>(*configuration));
    return SayFile(file);
}

bool Tour::SayFile(const std::filesystem::path& file)
{
    const auto text = host::ReadTextFile(file);
    if (!text)
        return Fail(text.GetError());
    Say("  ", file.filename().string(), " holds:");
    SayLines(*text);
    return true;
}

}  // namespace tvx::tool
