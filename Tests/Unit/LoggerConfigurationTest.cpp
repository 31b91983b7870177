// SPDX-License-Identifier: MIT
#include "Tests/Support/LoggerFixture.h"

namespace tvx::test
{

namespace
{

using Reads = std::vector<std::string>;

// The reads of a section, in their order.
Reads ReadsOf(const std::string& section)
{
    return {"GetInt " + section + "\\MinLevel 0", "GetBool " + section + "\\ToStdOut 0",
            "GetBool " + section + "\\ToFile 0", "GetInt " + section + "\\LogFlushThreshold 0",
            "GetString " + section + "\\Filename 0"};
}

// Delivers its values along with a failure.
class FailingConfiguration final : public ClassImpl<FailingConfiguration, IConfiguration>
{
public:
    using Interfaces = InterfaceList<IConfiguration, IObject, IObjectBase>;

    Result UnusedSlot11() override { return -42; }
    Result GetBool(const char*, bool* out, std::uint32_t) override
    {
        *out = false;
        return -42;
    }
    Result GetInt(const char*, std::int32_t* out, std::uint32_t) override
    {
        *out = 6;
        return -42;
    }
    Result UnusedSlot14() override { return -42; }
    Result GetString(const char*, IString**, std::uint32_t) override { return -42; }
};

// Succeeds without delivering anything.
class EmptyConfiguration final : public ClassImpl<EmptyConfiguration, IConfiguration>
{
public:
    using Interfaces = InterfaceList<IConfiguration, IObject, IObjectBase>;

    Result UnusedSlot11() override { return TVX_OK; }
    Result GetBool(const char*, bool*, std::uint32_t) override { return TVX_OK; }
    Result GetInt(const char*, std::int32_t*, std::uint32_t) override { return TVX_OK; }
    Result UnusedSlot14() override { return TVX_OK; }
    Result GetString(const char*, IString**, std::uint32_t) override { return TVX_OK; }
};

class LoggerConfiguration : public LoggerTest
{
};

}  // namespace

TEST_F(LoggerConfiguration, IsReadFromTheDefaultSectionAtOnce)
{
    EXPECT_EQ(logger->SetConfiguration(config.Get()), TVX_OK);
    EXPECT_EQ(config->reads, ReadsOf("Default"));
}

TEST_F(LoggerConfiguration, IsReadFromTheSectionOfANameAtItsFirstUse)
{
    logger->SetConfiguration(config.Get());
    config->reads.clear();
    logger->SetLevel("Net", 4);
    EXPECT_EQ(config->reads, ReadsOf("Net"));
    config->reads.clear();
    Logged("Net", LogLevel::Trace);
    GetLevel("Net");
    EXPECT_TRUE(config->reads.empty());
    GetLevel("Net\\Http");
    EXPECT_EQ(config->reads, ReadsOf("Net\\Http"));
}

TEST_F(LoggerConfiguration, IsNotNeeded)
{
    EXPECT_EQ(GetLevel("Main"), LogLevel::Info);
}

TEST_F(LoggerConfiguration, SetsTheDefaultsOfEveryName)
{
    Configure({{"Default\\MinLevel", LogLevel::Error}, {"Default\\ToStdOut", true}});
    EXPECT_EQ(GetLevel("Main"), LogLevel::Error);
    EXPECT_EQ(Logged("Net", LogLevel::Warn), "");
    EXPECT_EQ(Logged("Net", LogLevel::Error), " ERROR [S] m\n");
}

TEST_F(LoggerConfiguration, OfANameGoesBeforeTheDefaults)
{
    Configure({{"Default\\MinLevel", LogLevel::Error}, {"Net\\MinLevel", LogLevel::Debug}, {"Off\\ToStdOut", false}});
    EXPECT_EQ(GetLevel("Net"), LogLevel::Debug);
    EXPECT_EQ(GetLevel("Off"), LogLevel::Error);
    EXPECT_EQ(Logged("Off", LogLevel::Fatal), "");
    EXPECT_EQ(Logged("Net", LogLevel::Debug), " DEBUG [S] m\n");
}

TEST_F(LoggerConfiguration, GivesEachNameItsFile)
{
    Configure({{"Default\\ToFile", true},
               {"Default\\ToStdOut", false},
               {"Default\\LogFlushThreshold", 1},
               {"Net\\Filename", std::string("net.log")}});
    Say(*logger, "Net", "n");
    Say(*logger, "Main", "a");
    Say(*logger, "Other", "b");
    EXPECT_EQ(WithoutTimes(folder.Read("net.log")), " INFO  [S] n\n");
    EXPECT_EQ(WithoutTimes(folder.Read("log.txt")), " INFO  [S] a\n INFO  [S] b\n");
}

TEST_F(LoggerConfiguration, ExpandsTheFileNamesThatItGives)
{
    const ReplacedVariable variable("LOGDIR", folder.GetPath().string());
    Configure({{"Default\\ToFile", true}, {"Default\\Filename", std::string("$LOGDIR/app.log")}});
    CaptureOutput([&] { Say(*logger, "Main", "m"); });
    EXPECT_TRUE(folder.Has("app.log"));
}

TEST_F(LoggerConfiguration, ExpandsAnInheritedFileNameOnce)
{
    const ReplacedVariable variable("LOGNAME", "first.log");
    Configure({{"Default\\ToFile", true}, {"Default\\Filename", std::string("$LOGNAME")}});
    const ReplacedVariable changed("LOGNAME", "second.log");
    CaptureOutput([&] { Say(*logger, "Main", "m"); });
    EXPECT_TRUE(folder.Has("first.log"));
    EXPECT_FALSE(folder.Has("second.log"));
}

TEST_F(LoggerConfiguration, KeepsTheFileNameWhenItsReadFails)
{
    Configure({{"Default\\ToFile", true}, {"Net\\Filename", std::string("net.log")}});
    config->stringResult = -42;
    CaptureOutput([&] { Say(*logger, "Net", "m"); });
    EXPECT_TRUE(folder.Has("log.txt"));
    EXPECT_FALSE(folder.Has("net.log"));
}

TEST_F(LoggerConfiguration, TakesEveryResultThatIsNotNegativeForSuccess)
{
    config->stringResult = TVX_S_NOKEY;
    Configure({{"Default\\ToFile", true}, {"Default\\Filename", std::string("given.log")}});
    CaptureOutput([&] { Say(*logger, "Main", "m"); });
    EXPECT_TRUE(folder.Has("given.log"));
}

TEST_F(LoggerConfiguration, LooksAtNoOtherResult)
{
    EXPECT_EQ(logger->SetConfiguration(MakeRef<FailingConfiguration>().Get()), TVX_OK);
    EXPECT_EQ(GetLevel("Main"), 6);
    EXPECT_EQ(Logged("Main", 6), "");
}

TEST_F(LoggerConfiguration, SurvivesASuccessWithoutAText)
{
    EXPECT_EQ(logger->SetConfiguration(MakeRef<EmptyConfiguration>().Get()), TVX_OK);
    EXPECT_EQ(Logged("Main", LogLevel::Info), " INFO  [S] m\n");
}

TEST_F(LoggerConfiguration, ChangesOnlyNamesThatWereNotUsedBefore)
{
    Configure({{"Default\\MinLevel", LogLevel::Warn}, {"Main\\MinLevel", LogLevel::Error}});
    EXPECT_EQ(GetLevel("Main"), LogLevel::Error);
    EXPECT_EQ(GetLevel("Net"), LogLevel::Warn);
    const auto second = MakeRef<ScriptedConfiguration>(std::map<std::string, ScriptedConfiguration::Value>{
        {"Default\\MinLevel", LogLevel::Fatal}, {"Main\\MinLevel", LogLevel::Trace}, {"Late\\MinLevel", 2}});
    EXPECT_EQ(logger->SetConfiguration(second.Get()), TVX_OK);
    EXPECT_EQ(GetLevel("Main"), LogLevel::Error);
    EXPECT_EQ(GetLevel("Net"), LogLevel::Warn);
    EXPECT_EQ(GetLevel("New"), LogLevel::Fatal);
    EXPECT_EQ(GetLevel("Late"), LogLevel::Debug);
    EXPECT_EQ(config->GetRefCount(), 1u);
}

TEST_F(LoggerConfiguration, LeavesDefaultsAsTheyAreWhereItSaysNothing)
{
    Configure({{"Default\\MinLevel", LogLevel::Warn}});
    Configure({{"Default\\ToFile", false}});
    EXPECT_EQ(GetLevel("Main"), LogLevel::Warn);
}

TEST_F(LoggerConfiguration, DoesNotTouchANameThatWasUsedBeforeIt)
{
    EXPECT_EQ(GetLevel("Main"), LogLevel::Info);
    Configure({{"Main\\MinLevel", LogLevel::Trace}});
    EXPECT_EQ(GetLevel("Main"), LogLevel::Info);
}

TEST_F(LoggerConfiguration, OfTheNameDefaultIsReadForThatNameToo)
{
    Configure({{"Default\\MinLevel", LogLevel::Warn}});
    config->values["Default\\MinLevel"] = LogLevel::Trace;
    EXPECT_EQ(GetLevel("Default"), LogLevel::Trace);
    EXPECT_EQ(GetLevel("Main"), LogLevel::Warn);
}

TEST_F(LoggerConfiguration, RefusesNull)
{
    Configure({{"Default\\MinLevel", LogLevel::Warn}});
    const auto set = CaptureOutput([&] { EXPECT_EQ(logger->SetConfiguration(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(set, "TVX_RETURN_EPOINTER_IF_NULL", "Helpers/ConfigurableImpl.h"));
    const auto hook = CaptureOutput([&] { EXPECT_EQ(logger->OnConfigure(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(hook, "TVX_RETURN_EPOINTER_IF_NULL", "Src/ConsoleLoggerPlug.cpp"));
    EXPECT_EQ(GetLevel("Main"), LogLevel::Warn);
    config->values["Late\\MinLevel"] = LogLevel::Fatal;  // the one before is kept
    EXPECT_EQ(GetLevel("Late"), LogLevel::Fatal);
}

TEST_F(LoggerConfiguration, IsNotReadForANullPlace)
{
    logger->SetConfiguration(config.Get());
    config->reads.clear();
    CaptureOutput([&] { logger->GetLevel("Net", nullptr); });
    EXPECT_TRUE(config->reads.empty());
    GetLevel("Net");
    EXPECT_EQ(config->reads, ReadsOf("Net"));
}

}  // namespace tvx::test
