// SPDX-License-Identifier: MIT
#include "Tests/Support/HostDoubles.h"
#include "Tests/Support/LoggerFixture.h"

namespace tvx::test
{

namespace
{

// Lists the plug-ins with a text of the test's own, along with a result of its own.
class ListingLibManager final : public ClassImpl<ListingLibManager, ILibManager>
{
public:
    using Interfaces = InterfaceList<ILibManager, IObject, IObjectBase>;

    ListingLibManager(Ref<IString> text, Result result) : text_(std::move(text)), result_(result) {}

    Result GetInstalledPluginsVersions(IString** out) override
    {
        ++calls;
        HandOut(text_.Get(), out);
        return result_;
    }

    int calls = 0;

private:
    Ref<IString> text_;
    Result result_;
};

// Logs what it is told.
class LoggingServer final : public ClassImpl<LoggingServer, ICrashDumpServer>
{
public:
    using Interfaces = InterfaceList<ICrashDumpServer, IObject, IObjectBase>;

    explicit LoggingServer(ILogger& logger) : logger_(logger) {}

    Result AddFile(const char* path, const char*) override { return Say(logger_, "Main", path); }

private:
    ILogger& logger_;
};

class LoggerStartUp : public LoggerTest
{
protected:
    Ref<ListingLibManager> ImportManager(const Ref<IString>& text, Result result = TVX_OK)
    {
        auto manager = MakeRef<ListingLibManager>(text, result);
        Import("LibManager", manager);
        return manager;
    }

    // What the notification writes, without times.
    std::string Notified()
    {
        return CaptureOutput([&] { EXPECT_EQ(logger->OnImportsSet(), TVX_OK); });
    }

    void ConfigureMain(std::int32_t level) { Configure({{"Main\\MinLevel", level}}); }

    Ref<ConfiguredText> plugins = MakeRef<ConfiguredText>("Plugin 1.0\nOther 2.0");
};

}  // namespace

TEST_F(LoggerStartUp, ListsThePluginsWhenMainTakesDebugMessages)
{
    ConfigureMain(LogLevel::Debug);
    ImportManager(plugins);
    EXPECT_EQ(WithoutTimes(Notified()),
              " DEBUG [com.talvere.general.tvx.BasicLogger/1.0] Printing installed plugins version...\n"
              " DEBUG [com.talvere.general.tvx.BasicLogger/1.0] Plugin 1.0\n"
              "(no time) Other 2.0\n");
    EXPECT_EQ(plugins->GetRefCount(), 2u);  // ours and the double's
}

TEST_F(LoggerStartUp, ListsThePluginsInTheShortFormWhenMainTakesTraces)
{
    ConfigureMain(LogLevel::Trace);
    plugins = MakeRef<ConfiguredText>("P");
    ImportManager(plugins);
    EXPECT_EQ(WithoutTimes(Notified()),
              " DEBUG [com.talvere.general.tvx.BasicLogger/1.0] Printing installed plugins version...\n"
              " DEBUG [com.talvere.general.tvx.BasicLogger/1.0] P\n");
}

TEST_F(LoggerStartUp, TellsTheListingToHandlers)
{
    ConfigureMain(LogLevel::Debug);
    ImportManager(plugins);
    const auto handler = MakeRef<RecordingHandler>();
    std::vector<Ref<ILogData>> records;
    handler->action = [&](const SeenEvent& event) { records.emplace_back(reinterpret_cast<ILogData*>(event.param)); };
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    Notified();
    ASSERT_EQ(records.size(), 2u);
    for (const auto& record : records)
    {
        EXPECT_STREQ(record->GetLoggerName(), "Main");
        EXPECT_EQ(record->GetLevel(), 2u);
        EXPECT_STREQ(record->GetSource(), "com.talvere.general.tvx.BasicLogger/1.0");
        EXPECT_EQ(record->GetScope(), nullptr);
        EXPECT_EQ(record->GetFile(), nullptr);
        EXPECT_EQ(record->GetLine(), 0u);
    }
    EXPECT_STREQ(records[0]->GetMessage(), "Printing installed plugins version...");
    EXPECT_STREQ(records[1]->GetMessage(), "Plugin 1.0\nOther 2.0");
}

TEST_F(LoggerStartUp, ListsNothingWhenMainTakesInformationOnly)
{
    const auto manager = ImportManager(plugins);
    EXPECT_EQ(Notified(), "");
    EXPECT_EQ(manager->calls, 0);
}

TEST_F(LoggerStartUp, FixesTheSettingsOfMain)
{
    ImportManager(plugins);
    Notified();
    ConfigureMain(LogLevel::Trace);
    EXPECT_EQ(GetLevel("Main"), LogLevel::Info);
}

TEST_F(LoggerStartUp, DoesNothingWithoutALibraryManager)
{
    ConfigureMain(LogLevel::Trace);
    config->reads.clear();
    EXPECT_EQ(Notified(), AbsentImport("LibManager"));
    EXPECT_TRUE(config->reads.empty());  // "Main" is not in use yet
}

TEST_F(LoggerStartUp, ListsNothingWhenTheManagerFails)
{
    ConfigureMain(LogLevel::Debug);
    const auto manager = ImportManager(plugins, -42);
    EXPECT_EQ(Notified(), "");
    EXPECT_EQ(manager->calls, 1);
    EXPECT_EQ(plugins->GetRefCount(), 2u);
}

TEST_F(LoggerStartUp, ListsNothingWhenTheManagerGivesNoText)
{
    ConfigureMain(LogLevel::Debug);
    ImportManager(nullptr);
    EXPECT_EQ(Notified(), "");
}

TEST_F(LoggerStartUp, RegistersEachFileForCrashDumpsOncePerName)
{
    const auto server = MakeRef<RecordingCrashDumpServer>();
    Import("CrashDumpServer", server);
    ConfigureFile();
    config->values["Net\\Filename"] = std::string("missing/net.log");
    for (const char* const name : {"Main", "Net", "Other", "Main"})
        EXPECT_EQ(CaptureOutput([&] { Say(*logger, name, "m"); }), "");
    EXPECT_EQ(server->calls, (std::vector<std::string>{"AddFile log.txt Log File", "AddFile missing/net.log Log File",
                                                       "AddFile log.txt Log File"}));
}

TEST_F(LoggerStartUp, RegistersTheExpandedNameOfAFile)
{
    const ReplacedVariable variable("LOGNAME", "expanded");
    const auto server = MakeRef<RecordingCrashDumpServer>();
    Import("CrashDumpServer", server);
    Configure({{"Default\\ToFile", true}, {"Default\\Filename", std::string("$LOGNAME.log")}});
    GetLevel("Main");
    EXPECT_EQ(server->calls, std::vector<std::string>{"AddFile expanded.log Log File"});
}

TEST_F(LoggerStartUp, RegistersNothingForNamesWithoutAFile)
{
    const auto server = MakeRef<RecordingCrashDumpServer>();
    Import("CrashDumpServer", server);
    GetLevel("Main");
    EXPECT_TRUE(server->calls.empty());
}

TEST_F(LoggerStartUp, GoesOnWithAFileThatCannotBeRegistered)
{
    Import("CrashDumpServer", MakeRef<RecordingCrashDumpServer>(-42));
    ConfigureFile();
    const auto output = CaptureOutput([&] { EXPECT_EQ(Say(*logger, "Main", "m"), TVX_OK); });
    EXPECT_TRUE(IsReport(output, "TVX_FORWARD_FAILURE", "Src/ConsoleLoggerPlug.cpp"));
    EXPECT_EQ(WithoutTimes(folder.Read("log.txt")), " INFO  [S] m\n");
    EXPECT_EQ(CaptureOutput([&] { Say(*logger, "Main", "m"); }), "");
}

TEST_F(LoggerStartUp, GoesOnWithoutACrashDumpServer)
{
    ConfigureFile();
    EXPECT_EQ(CaptureOutput([&] { Say(*logger, "Main", "m"); }), AbsentImport("CrashDumpServer"));
    EXPECT_EQ(WithoutTimes(folder.Read("log.txt")), " INFO  [S] m\n");
}

TEST_F(LoggerStartUp, LetsACrashDumpServerLogUnderTheSameName)
{
    Import("CrashDumpServer", MakeRef<LoggingServer>(*logger));
    ConfigureFile();
    Say(*logger, "Main", "m");
    EXPECT_EQ(WithoutTimes(folder.Read("log.txt")), " INFO  [S] log.txt\n INFO  [S] m\n");
}

}  // namespace tvx::test
