// SPDX-License-Identifier: MIT
#include "Tests/Support/FailingMemory.h"
#include "Tests/Support/LoggerFixture.h"
#include "Tests/Support/MemoryTesting.h"

namespace tvx::test
{

namespace
{

// Writes nothing but to a file, and needs no memory for it.
class FileConfiguration final : public ClassImpl<FileConfiguration, IConfiguration>
{
public:
    using Interfaces = InterfaceList<IConfiguration, IObject, IObjectBase>;

    Result UnusedSlot11() override { return TVX_E_FAIL; }
    Result UnusedSlot14() override { return TVX_E_FAIL; }
    Result GetString(const char*, IString**, std::uint32_t) override { return TVX_E_FAIL; }
    Result GetBool(const char* key, bool* out, std::uint32_t) override
    {
        *out = std::string_view(key).ends_with("ToFile");
        return TVX_OK;
    }
    Result GetInt(const char* key, std::int32_t* out, std::uint32_t) override
    {
        if (std::string_view(key).ends_with("LogFlushThreshold"))
            *out = 1;
        return TVX_OK;
    }
};

// The name of a file that its configuration gives as a text of its own.
class NamingConfiguration final : public ClassImpl<NamingConfiguration, IConfiguration>
{
public:
    using Interfaces = InterfaceList<IConfiguration, IObject, IObjectBase>;

    Result UnusedSlot11() override { return TVX_E_FAIL; }
    Result UnusedSlot14() override { return TVX_E_FAIL; }
    Result GetBool(const char*, bool*, std::uint32_t) override { return TVX_E_FAIL; }
    Result GetInt(const char*, std::int32_t* out, std::uint32_t) override
    {
        *out = LogLevel::Fatal;
        return TVX_OK;
    }
    Result GetString(const char*, IString** out, std::uint32_t) override
    {
        const OwnMemory memory;
        *out = MakeRef<ConfiguredText>(LongText).Detach();
        return TVX_OK;
    }
};

class CountingHandler final : public ClassImpl<CountingHandler, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t, std::uint64_t) override
    {
        ++count;
        return TVX_OK;
    }

    int count = 0;
};

class LoggerWithoutMemory : public LoggerTest
{
protected:
    LoggerWithoutMemory() { CBasicLogger::GetOrMake(); }

    static void Configure(CBasicLogger& configured) { configured.SetConfiguration(MakeRef<FileConfiguration>().Get()); }
};

}  // namespace

TEST_F(LoggerWithoutMemory, RefusesLevelsAndLeavesOutUntouched)
{
    SweepFailures(
        [](MemoryFailure failure)
        {
            const auto fresh = MakeRef<CBasicLogger>();
            std::int32_t level = -99;
            const FailingMemory memory(failure);
            const auto got = fresh->GetLevel(LongText, &level);
            const bool failed = FailingMemory::HasFailed();
            EXPECT_EQ(got, failed ? TVX_E_POINTER : TVX_OK);
            EXPECT_EQ(level, failed ? -99 : 3);
            return failed;
        });
    SweepFailures(
        [](MemoryFailure failure)
        {
            const auto fresh = MakeRef<CBasicLogger>();
            const FailingMemory memory(failure);
            const auto set = fresh->SetLevel(LongText, 5);
            EXPECT_EQ(set, FailingMemory::HasFailed() ? TVX_E_POINTER : TVX_OK);
            return FailingMemory::HasFailed();
        });
}

TEST_F(LoggerWithoutMemory, KeepsItsDefaultsWhenTheyCannotBeReadWhole)
{
    const auto naming = MakeRef<NamingConfiguration>();
    SweepFailures(
        [&](MemoryFailure failure)
        {
            const auto fresh = MakeRef<CBasicLogger>();
            Result result = TVX_OK;
            bool failed = false;
            {
                const FailingMemory memory(failure);
                result = fresh->OnConfigure(naming.Get());
                failed = FailingMemory::HasFailed();
            }
            EXPECT_EQ(result, failed ? TVX_E_POINTER : TVX_OK);
            std::int32_t level = 0;
            fresh->GetLevel("Main", &level);
            EXPECT_EQ(level, failed ? LogLevel::Info : LogLevel::Fatal);
            return failed;
        });
}

TEST_F(LoggerWithoutMemory, NeverFailsToLogAndGoesOnAfterwards)
{
    SweepFailures(
        [&](MemoryFailure failure)
        {
            const auto fresh = MakeRef<CBasicLogger>();
            Configure(*fresh);
            bool failed = false;
            {
                const FailingMemory memory(failure);
                EXPECT_EQ(Say(*fresh, LongText, LongText), TVX_OK);
                failed = FailingMemory::HasFailed();
            }
            EXPECT_EQ(Say(*fresh, LongText, "after"), TVX_OK);
            EXPECT_TRUE(folder.Read("log.txt").ends_with(" INFO  [S] after\n"));
            return failed;
        });
}

TEST_F(LoggerWithoutMemory, TellsTheEventOfALineThatItCannotFormat)
{
    const std::string message(1'000'000, 'm');  // more than is buffered
    const auto fresh = MakeRef<CBasicLogger>();
    const auto handler = MakeRef<CountingHandler>();
    fresh->AdviseMessageLogged(handler.Get(), 0, true);
    Configure(*fresh);
    std::int32_t level = 0;
    fresh->GetLevel("Main", &level);
    {
        const FailingMemory memory({1, true});  // the record is made, the line is not
        EXPECT_EQ(Say(*fresh, "Main", message.c_str()), TVX_OK);
    }
    EXPECT_EQ(handler->count, 1);
    EXPECT_EQ(folder.Read("log.txt"), "");
}

TEST_F(LoggerWithoutMemory, NeedsItForTheRecordAlone)
{
    const auto fresh = MakeRef<CBasicLogger>();
    Configure(*fresh);
    Say(*fresh, "Main", LongText);
    const auto say = [&] { Say(*fresh, "Main", LongText); };
    EXPECT_EQ(CountAllocations(say), 0u);
    const auto handler = MakeRef<CountingHandler>();
    fresh->AdviseMessageLogged(handler.Get(), 0, true);
    EXPECT_EQ(CountAllocations(say), 1u);
    EXPECT_EQ(handler->count, 1);
    fresh->AdviseMessageLogged(handler.Get(), 0, false);
    EXPECT_EQ(CountAllocations(say), 0u);
    EXPECT_EQ(handler->count, 1);
}

TEST_F(LoggerWithoutMemory, NeedsNoneForALineThatNoOutputTakes)
{
    const std::string message(10000, 'm');
    const auto below = MakeRef<CBasicLogger>();
    below->SetLevel("Main", LogLevel::Fatal);
    EXPECT_EQ(CountAllocations([&] { Say(*below, "Main", message.c_str()); }), 0u);
    const auto off = MakeRef<CBasicLogger>();
    off->SetConfiguration(MakeRef<ScriptedConfiguration>(std::map<std::string, ScriptedConfiguration::Value>{
                                                             {"Default\\ToStdOut", false},
                                                             {"NoFile\\ToFile", true},
                                                             {"NoFile\\Filename", std::string("missing/log.txt")}})
                              .Get());
    for (const char* const name : {"Off", "NoFile"})
    {
        std::int32_t level = 0;
        off->GetLevel(name, &level);
        EXPECT_EQ(CountAllocations([&] { Say(*off, name, message.c_str()); }), 0u) << name;
    }
}

}  // namespace tvx::test
