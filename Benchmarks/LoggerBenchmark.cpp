// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/LoadedModule.h"
#include "Helpers/ClassImpl.h"
#include "Host/CrashDumpServer.h"
#include "Host/HostString.h"
#include "Interfaces/IConfigurable.h"
#include "Interfaces/ILogger.h"

#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::bench;

constexpr const char LoggerExport[] = "com.talvere.general.tvx.BasicLogger/1.0";
constexpr const char Message[] = "connection to 192.168.0.17 opened after 3 attempts";
constexpr int LinesToFlush = 200;

// A folder of this run's own for what is logged, removed at its end.
class LogFolder
{
public:
    LogFolder() { std::filesystem::create_directory(path_); }
    ~LogFolder()
    {
        std::error_code refused;  // what stays behind is no reason to fail
        std::filesystem::remove_all(path_, refused);
    }
    LogFolder(const LogFolder&) = delete;
    LogFolder& operator=(const LogFolder&) = delete;

    std::filesystem::path operator/(const char* name) const { return path_ / name; }

private:
    std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("tvx-bench-" + std::to_string(std::random_device()()));
};

std::filesystem::path LogFile(const char* name)
{
    static const LogFolder folder;
    return folder / name;
}

// Everything from INFO on into one file.
class FileConfiguration final : public ClassImpl<FileConfiguration, IConfiguration>
{
public:
    using Interfaces = InterfaceList<IConfiguration, IObject, IObjectBase>;

    Result UnusedSlot11() override { return TVX_E_FAIL; }
    Result UnusedSlot14() override { return TVX_E_FAIL; }
    Result GetInt(const char* key, std::int32_t* out, std::uint32_t) override
    {
        if (std::string_view(key).ends_with("LogFlushThreshold"))
            *out = LinesToFlush;
        return TVX_OK;
    }
    Result GetBool(const char* key, bool* out, std::uint32_t) override
    {
        *out = std::string_view(key).ends_with("ToFile");
        return TVX_OK;
    }
    Result GetString(const char*, IString** out, std::uint32_t) override
    {
        *out = MakeRef<host::HostString>(LogFile("ours").string()).Detach();
        return TVX_OK;
    }
};

// Reads a text of each record, as somebody who shows messages does.
class Listener final : public ClassImpl<Listener, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t record, std::uint64_t) override
    {
        if (auto* const data = reinterpret_cast<ILogData*>(record))
            benchmark::DoNotOptimize(data->GetMessage());
        ++heard;
        return TVX_OK;
    }

    std::int64_t heard = 0;
};

// One that reports no missing import: somebody wants to know of its file.
Ref<ILogger> MakeLogger()
{
    GetManager().Offer("com.talvere.general.tvx.contract.CrashDumpServer/1.0",
                       Ref<IObjectBase>(MakeRef<host::CrashDumpServer>()));
    const auto logger = GetExport<ILogger>(LoggerExport);
    Query<IConfigurable>(logger)->SetConfiguration(MakeRef<FileConfiguration>().Get());
    return logger;
}

const Ref<ILogger>& GetLogger()
{
    static const auto logger = MakeLogger();
    return logger;
}

void Say(ILogger& logger, std::int32_t level)
{
    logger.Log("Bench", level, "Net", "Connect", "Socket.cpp", 120, Message);
}

// Whether the first line of a file is the message, behind the nineteen characters of the time.
bool HoldsLine(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    return line.size() > 19 && line.substr(19) == std::string(" INFO  [Net] ") + Message;
}

void LogToFile(benchmark::State& state, std::int64_t)
{
    const auto& logger = GetLogger();
    for (int line = 0; line < LinesToFlush; ++line)
        Say(*logger, LogLevel::Info);
    if (!HoldsLine(LogFile("ours")))
        state.SkipWithError("the logger wrote something else");
    for (auto _ : state)
        Say(*logger, LogLevel::Info);
}

void LogToFileWithListener(benchmark::State& state, std::int64_t)
{
    const auto& logger = GetLogger();
    const auto listener = MakeRef<Listener>();
    logger->AdviseMessageLogged(listener.Get(), 0, true);
    LogToFile(state, 0);
    logger->AdviseMessageLogged(listener.Get(), 0, false);
    if (listener->heard != state.iterations() + LinesToFlush)
        state.SkipWithError("the listener did not hear every message");
}

// The same text: the level stands in the pattern, so that the peer need not look for its name.
void LogToFileOfPeer(benchmark::State& state, std::int64_t)
{
    const auto sink = std::make_shared<spdlog::sinks::basic_file_sink_st>(LogFile("peer").string(), true);
    spdlog::logger peer("Net", sink);
    peer.set_pattern("%Y-%m-%d %H:%M:%S INFO  [%n] %v");
    peer.info(Message);
    peer.flush();
    if (!HoldsLine(LogFile("peer")))
        state.SkipWithError("the peer wrote something else");
    int lines = 0;
    for (auto _ : state)
    {
        peer.info(Message);
        if (++lines < LinesToFlush)
            continue;
        peer.flush();
        lines = 0;
    }
}

void LogBelowLevel(benchmark::State& state, std::int64_t)
{
    const auto& logger = GetLogger();
    std::int32_t level = 0;
    logger->GetLevel("Bench", &level);
    if (level != LogLevel::Info)
        state.SkipWithError("the level is another one");
    for (auto _ : state)
        Say(*logger, LogLevel::Debug);
}

// Names that take turns.
void LogBelowLevels(benchmark::State& state, std::int64_t count)
{
    const auto& logger = GetLogger();
    std::vector<std::string> names;
    for (std::int64_t made = 0; made < count; ++made)
        names.push_back("Bench" + std::to_string(made));
    std::size_t at = 0;
    for (auto _ : state)
    {
        logger->Log(names[at].c_str(), LogLevel::Debug, "Net", "Connect", "Socket.cpp", 120, Message);
        at = at + 1 < names.size() ? at + 1 : 0;
    }
}

// Of a line to a file 40 % is the system's writing, which the peer pays as well. With a listener five texts are measured and
// copied into a record of its own. A filtered call is one with eight arguments, and one comparison of the name.
const Comparisons Rows = {
    {.name = "Logger/File",
     .ours = LogToFile,
     .peer = "spdlog, basic_file_sink_st",
     .theirs = LogToFileOfPeer,
     .goal = 0.30,
     .limit = 0.36},
    {.name = "Logger/FileWithListener",
     .ours = LogToFileWithListener,
     .peer = "spdlog, basic_file_sink_st",
     .theirs = LogToFileOfPeer,
     .goal = 0.45,
     .limit = 0.7},
    {.name = "Logger/Filtered", .ours = LogBelowLevel, .peer = "", .goal = 6, .bound = Bound::Nanoseconds, .limit = 12},
    {.name = "Logger/FilteredNames", .size = 10, .ours = LogBelowLevels, .peer = "", .bound = Bound::None},
};

}  // namespace
