// SPDX-License-Identifier: MIT
#include "Interfaces/IImportsContainer.h"
#include "Interfaces/ILogger.h"
#include "Tests/Module/LoadedModule.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/HostDoubles.h"
#include "Tests/Support/LoggerTesting.h"
#include "Tests/Support/RunProgram.h"
#include "Tests/Support/Worker.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>

namespace tvx::test
{

namespace
{

struct EndedHost
{
    std::string log;
    std::string output;
};

EndedHost RunHost(const std::string& end)
{
    const CurrentFolder folder;
    Program host;
    host.file = TVX_LOGGING_HOST;
    const auto run = RunProgram(host, {"app.log", end});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    return {WithoutTimes(folder.Read("app.log")), run.output};
}

// What a host that ends in this way leaves in its log.
std::string LogAfter(const std::string& end)
{
    return RunHost(end).log;
}

// How often each number stands in whole lines, which hold nothing else: the process may end in the midst of the last one.
std::map<std::string, int> CountNumbers(const std::string& log)
{
    std::map<std::string, int> counts;
    std::istringstream lines(log.substr(0, log.rfind('\n') + 1));
    for (std::string line; std::getline(lines, line);)
    {
        const std::string start = " INFO  [S] ";
        EXPECT_EQ(line.substr(0, start.size()), start);
        ++counts[line.substr(start.size())];
    }
    return counts;
}

constexpr const char BothLines[] = " INFO  [S] first\n INFO  [S] second\n";

}  // namespace

TEST(ModuleLogger, WritesBufferedLinesWhenTheModuleIsUnloaded)
{
    EXPECT_EQ(LogAfter("release-and-unload"), BothLines);
}

TEST(ModuleLogger, WritesBufferedLinesWhenTheProcessEnds)
{
    EXPECT_EQ(LogAfter("release-and-exit"), BothLines);
}

TEST(ModuleLogger, WritesBufferedLinesWhenTheProcessEndsWithALoggerThatIsHeld)
{
    EXPECT_EQ(LogAfter("hold-and-exit"), BothLines);
}

TEST(ModuleLogger, WritesBufferedLinesWhenTheProcessEndsAfterUnloadingUnderALoggerThatIsHeld)
{
    EXPECT_EQ(LogAfter("hold-and-unload"), BothLines);
}

TEST(ModuleLogger, WritesAtOnceWhatIsLoggedAfterTheEnd)
{
    EXPECT_EQ(LogAfter("hold-and-log-last"), std::string(BothLines) + " INFO  [S] third\n");
}

// Who logs at the very moment of the end may lose that one line, or the rest of it.
TEST(ModuleLogger, WritesBufferedLinesOnceWhenTheProcessEndsWhileAThreadLogs)
{
    for (int round = 0; round < 10; ++round)
    {
        const auto host = RunHost("hold-and-log-on");
        const auto counts = CountNumbers(host.log);
        const int certain = std::stoi(host.output.substr(host.output.find_first_of("0123456789")));
        EXPECT_GE(certain, 1000);
        for (int number = 0; number < certain; ++number)
            ASSERT_EQ(counts.count(std::to_string(number)), 1u) << number;
        for (const auto& [number, count] : counts)
            ASSERT_EQ(count, 1) << number;
    }
}

TEST(ModuleLogger, WritesBufferedLinesOnceForEachProcessThatHasThem)
{
    EXPECT_EQ(LogAfter("hold-and-fork"), std::string(BothLines) + BothLines);
}

TEST(ModuleLogger, LetsAThreadThatLoggedEndAfterUnloading)
{
    const CurrentFolder folder;
    for (int round = 0; round < 10; ++round)
    {
        auto module = std::make_unique<LoadedModule>();
        auto worker = std::make_unique<Worker>();
        worker->Do([&] { CaptureOutput([&] { Say(*module->Get<ILogger>(LoggerExport), "Main", "message"); }); });
        module.reset();
        EXPECT_FALSE(LoadedModule::IsMapped());
        worker.reset();
    }
}

TEST(ModuleLogger, IsConnectedAsAHostDoesIt)
{
    const CurrentFolder folder;
    const LoadedModule module;
    const auto config = MakeRef<ScriptedConfiguration>(std::map<std::string, ScriptedConfiguration::Value>{
        {"Default\\ToFile", true}, {"Default\\ToStdOut", false}, {"Default\\LogFlushThreshold", 1}});
    const auto server = MakeRef<RecordingCrashDumpServer>();
    const auto proxy = MakeRef<ImportProxy>(Ref<IObjectBase>(server));
    const auto logger = module.Get<ILogger>(LoggerExport);
    const auto imports = Query<IImportsContainer>(logger);
    EXPECT_EQ(Query<IConfigurable>(logger)->SetConfiguration(config.Get()), TVX_OK);
    EXPECT_EQ(imports->SetImport("CrashDumpServer", static_cast<IExportProxy*>(proxy.Get())), TVX_OK);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(imports->OnImportsSet(), TVX_OK); }),
              "LibManager: NULL object proxy returned for \"LibManager\".\n");
    EXPECT_EQ(imports->OnImportsHook(), TVX_OK);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(Say(*logger, "Main", "message"), TVX_OK); }), "");
    EXPECT_EQ(WithoutTimes(folder.Read("log.txt")), " INFO  [S] message\n");
    EXPECT_EQ(server->calls, std::vector<std::string>{"AddFile log.txt Log File"});
    imports->ClearImports();
    EXPECT_EQ(proxy->GetRefCount(), 1u);
}

TEST(ModuleLogger, ReleasesConfigurationAndImportsWhenTheModuleIsUnloaded)
{
    const auto config = MakeRef<ScriptedConfiguration>();
    const auto import = MakeRef<BareObject>();
    {
        const LoadedModule module;
        const auto logger = module.Get<ILogger>(LoggerExport);
        Query<IConfigurable>(logger)->SetConfiguration(config.Get());
        Query<IImportsContainer>(logger)->SetImport("LibManager", import.Get());
        EXPECT_EQ(config->GetRefCount(), 2u);
        EXPECT_EQ(import->GetRefCount(), 2u);
    }
    EXPECT_TRUE(config->IsUnique());
    EXPECT_TRUE(import->IsUnique());
}

}  // namespace tvx::test
