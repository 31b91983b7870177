// SPDX-License-Identifier: MIT
#include "Interfaces/IImportsContainer.h"
#include "Interfaces/ILogger.h"
#include "Tests/Module/LoadedModule.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/HostDoubles.h"
#include "Tests/Support/LoggerTesting.h"
#include "Tests/Support/RunProgram.h"

#include <gtest/gtest.h>

namespace tvx::test
{

namespace
{

// What a host that ends in this way leaves in its log.
std::string LogAfter(const std::string& end)
{
    const CurrentFolder folder;
    Program host;
    host.file = TVX_LOGGING_HOST;
    const auto run = RunProgram(host, {"app.log", end});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    return WithoutTimes(folder.Read("app.log"));
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
