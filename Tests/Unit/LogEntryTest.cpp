// SPDX-License-Identifier: MIT
#include "Src/LogEntry.h"
#include "Interfaces/ILogger.h"
#include "Platform/ThreadId.h"

#include <gtest/gtest.h>

#include <future>

namespace tvx::test
{

namespace
{

std::string MakeLine(const LogEntry& entry)
{
    const LogLine line("TIME", entry);
    std::string text(line.GetSize() + 1, '#');
    line.CopyTo(text.data());
    EXPECT_EQ(text.back(), '#');
    text.pop_back();
    return text;
}

std::string MakeLine(std::int32_t level)
{
    return MakeLine({"Main", level, "Net", "Connect", "C:\\src\\Socket.cpp", 120, "opened"});
}

std::string ThisThread()
{
    return "[ThreadID=" + std::to_string(Platform::GetCurrentThreadId()) + "] ";
}

std::string TraceOf(const char* file)
{
    return MakeLine({"Main", LogLevel::Trace, "Net", "Connect", file, 1, "m"});
}

}  // namespace

TEST(LogLine, HasTheDetailedFormForATrace)
{
    EXPECT_EQ(MakeLine(LogLevel::Trace), "TIME TRACE [Net] [Connect] [Socket.cpp:120] " + ThisThread() + "opened\n");
}

TEST(LogLine, HasTheShortFormForEveryOtherLevel)
{
    EXPECT_EQ(MakeLine(LogLevel::Debug), "TIME DEBUG [Net] opened\n");
    EXPECT_EQ(MakeLine(LogLevel::Info), "TIME INFO  [Net] opened\n");
    EXPECT_EQ(MakeLine(LogLevel::Warn), "TIME WARN  [Net] opened\n");
    EXPECT_EQ(MakeLine(LogLevel::Error), "TIME ERROR [Net] opened\n");
    EXPECT_EQ(MakeLine(LogLevel::Fatal), "TIME FATAL [Net] opened\n");
}

TEST(LogLine, NamesUnknownLevelsWithFiveBlanks)
{
    for (const std::int32_t level : {0, 7, -1, 1000, INT32_MIN, INT32_MAX})
        EXPECT_EQ(MakeLine(level), "TIME       [Net] opened\n") << level;
}

TEST(LogLine, ShowsTheLastComponentOfAPathWithEitherSeparator)
{
    const auto shown = [](const char* file) { return "TIME TRACE [Net] [Connect] [" + std::string(file) + ":1] "; };
    EXPECT_EQ(TraceOf("C:\\dir\\sub\\File.cpp"), shown("File.cpp") + ThisThread() + "m\n");
    EXPECT_EQ(TraceOf("/dir/sub/File.cpp"), shown("File.cpp") + ThisThread() + "m\n");
    EXPECT_EQ(TraceOf("/dir\\sub/File.cpp"), shown("File.cpp") + ThisThread() + "m\n");
    EXPECT_EQ(TraceOf("dir/sub\\File.cpp"), shown("File.cpp") + ThisThread() + "m\n");
    EXPECT_EQ(TraceOf("File.cpp"), shown("File.cpp") + ThisThread() + "m\n");
    EXPECT_EQ(TraceOf("dir/"), shown(".") + ThisThread() + "m\n");
}

TEST(LogLine, ShowsThePathOfADriveWhole)
{
    EXPECT_EQ(GetLastComponent("C:File.cpp"), "C:File.cpp");
}

TEST(LogLine, TakesNothingBehindTheLastSeparatorForADot)
{
    EXPECT_EQ(GetLastComponent("dir\\"), ".");
    EXPECT_EQ(GetLastComponent("/"), ".");
    EXPECT_EQ(GetLastComponent("\\"), ".");
    EXPECT_EQ(GetLastComponent("a//"), ".");
    EXPECT_EQ(GetLastComponent("a/.."), "..");
    EXPECT_EQ(GetLastComponent(""), "");
}

TEST(LogLine, PrintsLineNumbersUnsigned)
{
    const auto line = MakeLine({"Main", LogLevel::Trace, "s", "c", "f", 4294967295U, "m"});
    EXPECT_EQ(line, "TIME TRACE [s] [c] [f:4294967295] " + ThisThread() + "m\n");
}

TEST(LogLine, NumbersTheCallingThread)
{
    auto other = std::async(std::launch::async, [] { return std::pair(MakeLine(LogLevel::Trace), ThisThread()); });
    const auto [line, thread] = other.get();
    EXPECT_EQ(line, "TIME TRACE [Net] [Connect] [Socket.cpp:120] " + thread + "opened\n");
    EXPECT_NE(thread, ThisThread());
}

TEST(LogLine, PrintsNullTextsAsEmpty)
{
    EXPECT_EQ(MakeLine({nullptr, LogLevel::Info, nullptr, nullptr, nullptr, 0, nullptr}), "TIME INFO  [] \n");
    EXPECT_EQ(MakeLine({nullptr, LogLevel::Trace, nullptr, nullptr, nullptr, 0, nullptr}),
              "TIME TRACE [] [] [:0] " + ThisThread() + "\n");
}

TEST(LogLine, KeepsTheBytesOfItsTexts)
{
    EXPECT_EQ(MakeLine({"Main", LogLevel::Info, "%s\n", "", "", 0, "\xFF%d\r\n\t"}),
              "TIME INFO  [%s\n] \xFF%d\r\n\t\n");
}

}  // namespace tvx::test
