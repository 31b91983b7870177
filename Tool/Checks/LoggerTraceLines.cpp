// SPDX-License-Identifier: MIT
#include "Tool/Checks/LoggerBench.h"

#include <thread>

namespace tvx::check
{

namespace
{

void WritesTracesInTheDetailedForm(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Open("Main");
    logger.Writes("a message of level 1", {.level = 1, .file = "C:\\src\\Socket.cpp"}, TraceLine("Socket.cpp"));
}

void WritesTheThreadThatLogs(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Open("Main");
    std::string expected;
    const auto log = [&]
    {
        expected = TraceLine("Socket.cpp");
        logger->Log("Main", LogLevel::Trace, "Net", "Connect", "Socket.cpp", 120, "opened");
    };
    const auto other = trial.TakeOutput([&] { std::thread(log).join(); });
    trial.Equal("the trace of another thread, without its time,", WithoutTimes(other), expected);
    const auto first = trial.TakeOutput(log);
    trial.Equal("the trace of the first thread, without its time,", WithoutTimes(first), expected);
}

void WritesLineNumbersWithoutSign(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Open("Main");
    for (const std::uint32_t line : {0u, 1u, 2147483648u, 4294967295u})
    {
        const auto came = logger.Log({.level = LogLevel::Trace, .line = line});
        const auto expected = "[Socket.cpp:" + std::to_string(line) + "]";
        trial.Expect(came.find(expected) != std::string::npos, "a trace with " + expected, Show(came));
    }
}

struct ShownPath
{
    const char* path;
    const char* shown;
};

void ShowsTheLastPartOfAPath(Trial& trial)
{
    constexpr ShownPath paths[] = {
        {"C:\\dir\\sub\\File.cpp", "File.cpp"}, {"/usr/src/File.cpp", "File.cpp"}, {"dir\\sub/File.cpp", "File.cpp"},
        {"dir/sub\\File.cpp", "File.cpp"},      {"File.cpp", "File.cpp"},          {"../File", "File"},
        {"/File.tar.gz", "File.tar.gz"}};
    LoggerBench logger(trial);
    logger.Open("Main");
    for (const auto& [path, shown] : paths)
        logger.Writes("a trace from " + Show(path), {.level = 1, .file = path}, TraceLine(shown));
}

void ShowsADotForAPathThatEndsInASeparator(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Open("Main");
    for (const char* const path : {"dir/", "dir\\", "C:\\dir\\", "/", "\\"})
        logger.Writes("a trace from " + Show(path), {.level = 1, .file = path}, TraceLine("."));
}

void ShowsNothingForAnEmptyPath(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Open("Main");
    logger.Writes("a trace from an empty path", {.level = 1, .file = ""}, TraceLine(""));
}

constexpr Check Checks[] = {
    {"logger-writes-traces-in-detail", "A message of level 1.",
     "A trace also shows scope, the file without its folders, line and thread, each in brackets.",
     WritesTracesInTheDetailedForm},
    {"logger-writes-the-thread-that-logs", "Traces from two threads.",
     "A trace shows the system's own number of the thread that called Log, in decimal.", WritesTheThreadThatLogs},
    {"logger-writes-line-numbers-without-sign", "Traces with line numbers up to 4294967295.",
     "The line is an unsigned number of 32 bits, written in decimal.", WritesLineNumbersWithoutSign},
    {"logger-shows-the-last-part-of-a-path", "Traces from files with slashes and backslashes in their paths.",
     "A file is shown by the last part of its path, on every system behind either separator.", ShowsTheLastPartOfAPath},
    {"logger-shows-a-dot-for-a-folder", "Traces from paths that end in a separator.",
     "The last part of a path that ends in a separator is a dot.", ShowsADotForAPathThatEndsInASeparator},
    {"logger-shows-nothing-for-an-empty-path", "A trace from an empty path.", "An empty path is shown as nothing.",
     ShowsNothingForAnEmptyPath},
};

}  // namespace

extern const Family LoggerTraceLinesFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
