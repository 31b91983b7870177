// SPDX-License-Identifier: MIT
#include "Benchmarks/LoadedModule.h"
#include "Helpers/ClassImpl.h"
#include "Host/HostString.h"
#include "Interfaces/IConfigurable.h"
#include "Interfaces/ILogger.h"

#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace
{

using namespace tvx;
using namespace tvx::bench;

constexpr const char LoggerExport[] = "com.talvere.general.tvx.BasicLogger/1.0";
constexpr const char Message[] = "connection to 192.168.0.17 opened after 3 attempts";

std::filesystem::path LogFile(const char* name)
{
    return std::filesystem::temp_directory_path() / ("tvx-bench-" + std::string(name) + ".log");
}

// Everything from INFO on into one file.
class FileConfiguration final : public ClassImpl<FileConfiguration, IConfiguration>
{
public:
    using Interfaces = InterfaceList<IConfiguration, IObject, IObjectBase>;

    Result UnusedSlot11() override { return TVX_E_FAIL; }
    Result UnusedSlot14() override { return TVX_E_FAIL; }
    Result GetInt(const char*, std::int32_t*, std::uint32_t) override { return TVX_E_FAIL; }
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

Ref<ILogger> GetLogger()
{
    const auto logger = GetExport<ILogger>(LoggerExport);
    Query<IConfigurable>(logger)->SetConfiguration(MakeRef<FileConfiguration>().Get());
    return logger;
}

std::shared_ptr<spdlog::logger> MakePeer()
{
    const auto sink = std::make_shared<spdlog::sinks::basic_file_sink_st>(LogFile("peer").string(), true);
    auto peer = std::make_shared<spdlog::logger>("Net", sink);
    peer->set_pattern("%Y-%m-%d %H:%M:%S %l [%n] %v");
    return peer;
}

bool HoldsLine(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    return line.ends_with(std::string("[Net] ") + Message);
}

void LogToFile(benchmark::State& state)
{
    const auto logger = GetLogger();
    for (auto _ : state)
        logger->Log("Bench", LogLevel::Info, "Net", "Connect", "Socket.cpp", 120, Message);
    for (int line = 0; line < 200; ++line)  // as many as are flushed at once, so that the last flush comes
        logger->Log("Bench", LogLevel::Info, "Net", "Connect", "Socket.cpp", 120, Message);
    if (!HoldsLine(LogFile("ours")))
        state.SkipWithError("the logger wrote something else");
}
BENCHMARK(LogToFile)->Name("Logger/Log/file");

void LogToFileOfPeer(benchmark::State& state)
{
    const auto peer = MakePeer();
    for (auto _ : state)
        peer->info(Message);
    peer->flush();
    if (!HoldsLine(LogFile("peer")))
        state.SkipWithError("the peer wrote something else");
}
BENCHMARK(LogToFileOfPeer)->Name("Logger/Log/file/peer:spdlog");

// Still makes the record and tells those who listen.
void LogBelowLevel(benchmark::State& state)
{
    const auto logger = GetLogger();
    for (auto _ : state)
        logger->Log("Bench", LogLevel::Debug, "Net", "Connect", "Socket.cpp", 120, Message);
    std::int32_t level = 0;
    logger->GetLevel("Bench", &level);
    if (level != LogLevel::Info)
        state.SkipWithError("the level is another one");
}
BENCHMARK(LogBelowLevel)->Name("Logger/Log/filtered");

// What the peer takes to make a record of its own and hand it to somebody who does nothing with it.
void LogToNobodyOfPeer(benchmark::State& state)
{
    struct NullSink final : spdlog::sinks::sink
    {
        void log(const spdlog::details::log_msg& message) override
        {
            benchmark::DoNotOptimize(spdlog::details::log_msg_buffer(message));
        }
        void flush() override {}
        void set_pattern(const std::string&) override {}
        void set_formatter(std::unique_ptr<spdlog::formatter>) override {}
    };
    spdlog::logger peer("Net", std::make_shared<NullSink>());
    for (auto _ : state)
        peer.info(Message);
}
BENCHMARK(LogToNobodyOfPeer)->Name("Logger/Log/filtered/peer:spdlog-record");

}  // namespace
