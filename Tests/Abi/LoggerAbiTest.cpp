// SPDX-License-Identifier: MIT
#include "Src/CLogData.h"
#include "Src/ConsoleLoggerPlug.h"
#include "Tests/Abi/AbiTest.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

namespace tvx::test
{

TEST(LogDataSlots, GiveWhatWasLogged)
{
    const auto record = MakeRef<CLogData>(LogEntry{"name", 5, "source", "scope", "file", 7, "message"});
    void* const c = ToC<ILogData>(record);
    EXPECT_STREQ(CallILogDataGetLoggerName(c), "name");
    EXPECT_EQ(CallILogDataGetLevel(c), 5u);
    EXPECT_STREQ(CallILogDataGetSource(c), "source");
    EXPECT_STREQ(CallILogDataGetScope(c), "scope");
    EXPECT_STREQ(CallILogDataGetFile(c), "file");
    EXPECT_EQ(CallILogDataGetLine(c), 7u);
    EXPECT_STREQ(CallILogDataGetMessage(c), "message");
}

TEST(LoggerSlots, LogAndTell)
{
    const auto logger = MakeRef<CBasicLogger>();
    const auto handler = MakeRef<RecordingHandler>();
    void* const c = ToC<ILogger>(logger);
    CallILoggerAdviseMessageLogged(c, ToC<IEventHandler>(handler), 3, true);
    const auto line =
        CaptureOutput([&] { EXPECT_EQ(CallILoggerLog(c, "Main", 3, "source", "", "", 0, "message"), TVX_OK); });
    EXPECT_TRUE(line.ends_with(" INFO  [source] message\n")) << line;
    CallILoggerFireMessageLogged(c, nullptr);
    ASSERT_EQ(handler->events.size(), 2u);
    EXPECT_EQ(handler->events[1].param, 0u);
    EXPECT_EQ(handler->events[1].userData, 3u);
    CallILoggerAdviseMessageLogged(c, ToC<IEventHandler>(handler), 3, false);
    CallILoggerFireMessageLogged(c, nullptr);
    EXPECT_EQ(handler->events.size(), 2u);
}

TEST(LoggerSlots, SetAndGetLevels)
{
    const auto logger = MakeRef<CBasicLogger>();
    void* const c = ToC<ILogger>(logger);
    std::int32_t level = 0;
    EXPECT_EQ(CallILoggerSetLevel(c, "Main", -7), TVX_OK);
    EXPECT_EQ(CallILoggerGetLevel(c, "Main", &level), TVX_OK);
    EXPECT_EQ(level, -7);
}

}  // namespace tvx::test
