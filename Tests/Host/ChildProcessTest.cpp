// SPDX-License-Identifier: MIT
#include "Platform/ChildProcess.h"

#include <gtest/gtest.h>

#include <csignal>

namespace tvx::test
{

namespace
{

using End = Platform::ChildRun::End;
using namespace std::chrono_literals;

Platform::ChildRun RunShell(const std::string& script, std::chrono::milliseconds limit = 20s)
{
    return Platform::RunChild("/bin/sh", {"-c", script}, limit);
}

TEST(ChildProcess, GivesTheExitCodeAndWhatWasWritten)
{
    const auto run = RunShell("echo out; echo err >&2; exit 3");
    EXPECT_EQ(run.end, End::Exited);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.output, "out\n");
    EXPECT_EQ(run.errors, "err\n");
    EXPECT_FALSE(run.leftProcesses);
}

TEST(ChildProcess, HasNoInput)
{
    EXPECT_EQ(RunShell("cat; echo end").output, "end\n");
}

TEST(ChildProcess, NamesTheSignalThatEndedIt)
{
    const auto run = RunShell("kill -SEGV $$");
    EXPECT_EQ(run.end, End::Killed);
    EXPECT_EQ(run.reason, "signal 11 (SIGSEGV, Segmentation fault)");
}

TEST(ChildProcess, IsEndedWhenItTakesTooLong)
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(RunShell("echo before; sleep 60", 200ms).end, End::TimedOut);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
}

TEST(ChildProcess, IsEndedAlsoWhenItClosedItsStreams)
{
    EXPECT_EQ(RunShell("exec >&- 2>&-; sleep 60", 200ms).end, End::TimedOut);
}

TEST(ChildProcess, IsEndedWhenItWritesWithoutEnd)
{
    const auto run =
        RunShell("while :; do echo 0123456789012345678901234567890123456789012345678901234567890123; done");
    EXPECT_EQ(run.end, End::Flooded);
    EXPECT_LT(run.output.size(), 2 * Platform::MostOutput);
}

TEST(ChildProcess, IsNotWaitedForLongerThanItLives)
{
    const auto start = std::chrono::steady_clock::now();
    const auto run = RunShell("sleep 60 & echo end");
    EXPECT_EQ(run.end, End::Exited);
    EXPECT_EQ(run.output, "end\n");
    EXPECT_TRUE(run.leftProcesses);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
}

TEST(ChildProcess, EndsWhatTheChildStarted)
{
    const auto run = RunShell("sleep 60 & echo $!");
    EXPECT_TRUE(run.leftProcesses);
    const auto left = std::stoi(run.output);
    for (int tries = 0; tries < 1000 && kill(left, 0) == 0; ++tries)
        EXPECT_EQ(RunShell("sleep 0.01").exitCode, 0);
    EXPECT_NE(kill(left, 0), 0);
}

TEST(ChildProcess, SaysWhyItCouldNotBeStarted)
{
    const auto run = Platform::RunChild("/no/such/program", {}, 1s);
    EXPECT_EQ(run.end, End::NotStarted);
    EXPECT_EQ(run.reason, "No such file or directory");
}

}  // namespace

}  // namespace tvx::test
