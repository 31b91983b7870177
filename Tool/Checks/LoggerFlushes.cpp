// SPDX-License-Identifier: MIT
#include "Tool/Checks/LogFolder.h"
#include "Tool/Checks/LoggerFiles.h"

namespace tvx::check
{

Ref<ScriptedConfiguration> ConfigureFile(LoggerBench& logger, std::int32_t threshold,
                                         const ScriptedConfiguration::Values& more)
{
    logger.ImportCrashDumpServer();
    auto values = more;
    values.insert({{"Default\\ToStdOut", false}, {"Default\\ToFile", true}, {"Default\\LogFlushThreshold", threshold}});
    return logger.Configure(std::move(values));
}

void Unload(Trial& trial)
{
    static_cast<void>(trial.TakeOutput([&] { trial.Unload(); }));
}

namespace
{

using Counts = std::vector<std::size_t>;

// The lines in log.txt after each of some messages.
Counts CountAfterEach(LoggerBench& logger, const LogFolder& folder, const char* name, int messages)
{
    Counts counts;
    for (int count = 0; count < messages; ++count)
    {
        logger.Log({.logger = name});
        counts.push_back(folder.CountLines("log.txt"));
    }
    return counts;
}

// Messages that are to write nothing to standard output.
void LogOften(Trial& trial, const LoggerBench& logger, int messages, const char* text)
{
    const auto log = [&]
    {
        for (int count = 0; count < messages; ++count)
            logger->Log("Main", LogLevel::Info, "Net", nullptr, nullptr, 0, text);
    };
    trial.Writes("messages for the file", "", log);
}

void FlushesAtTheThreshold(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 3);
    trial.Equal("the lines in the file after each message", CountAfterEach(logger, folder, "Main", 7),
                Counts{0, 0, 3, 3, 3, 6, 6});
}

void FlushesEachLine(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 1, {{"Net\\LogFlushThreshold", 0}, {"Web\\LogFlushThreshold", -5}});
    trial.Equal("the lines after each message at a threshold of 1", CountAfterEach(logger, folder, "Main", 3),
                Counts{1, 2, 3});
    trial.Equal("the lines after each message at a threshold of 0", CountAfterEach(logger, folder, "Net", 3),
                Counts{4, 5, 6});
    trial.Equal("the lines after each message at a threshold of -5", CountAfterEach(logger, folder, "Web", 3),
                Counts{7, 8, 9});
}

void FlushesTwoHundredLinesByItself(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    logger.ImportCrashDumpServer();
    logger.Configure({{"Default\\ToStdOut", false}, {"Default\\ToFile", true}});
    LogOften(trial, logger, 199, "opened");
    trial.Expect(folder.CountLines("log.txt") < 199, "the 199th line not to be flushed", "199 lines in the file");
    LogOften(trial, logger, 1, "opened");
    trial.Equal("the lines in the file after 200 messages", folder.CountLines("log.txt"), 200u);
    LogOften(trial, logger, 199, "opened");
    trial.Expect(folder.CountLines("log.txt") < 399, "the 399th line not to be flushed", "399 lines in the file");
    LogOften(trial, logger, 1, "opened");
    trial.Equal("the lines in the file after 400 messages", folder.CountLines("log.txt"), 400u);
}

void CountsTheLinesThatAreWritten(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 2);
    logger.SetLevel("Main", LogLevel::Error);
    trial.Equal("the lines after messages below the minimum", CountAfterEach(logger, folder, "Main", 3),
                Counts{0, 0, 0});
    logger.SetLevel("Main", LogLevel::Info);
    trial.Equal("the lines after messages that count", CountAfterEach(logger, folder, "Main", 2), Counts{0, 2});
}

void CountsForEachName(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 3, {{"Net\\LogFlushThreshold", 2}});
    trial.Equal("the lines after two messages of three", CountAfterEach(logger, folder, "Main", 2), Counts{0, 0});
    trial.Equal("the lines after two messages of two", CountAfterEach(logger, folder, "Net", 2), Counts{0, 4});
    trial.Equal("the lines after the third of three", CountAfterEach(logger, folder, "Main", 1), Counts{5});
}

// With messages that are long enough to fill any buffer now and then.
void WritesTheRestWhenItIsUnloaded(Trial& trial)
{
    const LogFolder folder;
    const std::string text(1000, 'x');
    {
        LoggerBench logger(trial);
        ConfigureFile(logger, 200);
        LogOften(trial, logger, 199, text.c_str());
    }
    Unload(trial);
    trial.Equal("the lines in the file after the module was unloaded", folder.CountLines("log.txt"), 199u);
    trial.Equal("the bytes in the file", folder.Read("log.txt").size(), 199 * (TimeLength + 13 + text.size() + 1));
}

constexpr Check Checks[] = {
    {"logger-file-is-flushed-at-the-threshold",
     "The file is looked at after each of seven messages; the threshold is 3.",
     "The file is flushed after as many lines as the threshold says, and not before: lines are kept until then.",
     FlushesAtTheThreshold},
    {"logger-file-is-flushed-after-each-line", "The file is looked at with thresholds of 1, 0 and -5.",
     "A threshold of 1 or less means that every line is in the file when Log returns.", FlushesEachLine},
    {"logger-file-is-flushed-after-200-lines-by-itself", "400 messages without a threshold in the configuration.",
     "The built-in threshold is 200 lines.", FlushesTwoHundredLinesByItself},
    {"logger-file-threshold-counts-written-lines", "Messages below the minimum come before others.",
     "Only lines that were written count towards the threshold.", CountsTheLinesThatAreWritten},
    {"logger-file-threshold-counts-for-each-name", "Two names with different thresholds share a file.",
     "Each name counts its own lines; a flush takes along what others wrote.", CountsForEachName},
    {"logger-file-is-complete-after-unloading", "199 long lines are written before the module is unloaded.",
     "What was not flushed yet is written when the module is unloaded; nothing is lost.",
     WritesTheRestWhenItIsUnloaded},
};

}  // namespace

extern const Family LoggerFlushFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
