// SPDX-License-Identifier: MIT
#include "Platform/LocalTime.h"
#include "Platform/ThreadId.h"
#include "Tool/Checks/LogFolder.h"
#include "Tool/Checks/LoggerBench.h"

#include <cstdint>
#include <ctime>

namespace tvx::check
{

namespace
{

void WritesInformationByItself(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Writes("a message of level 3 without a configuration", {}, InfoLine);
}

void LeavesOutWhatIsBelowInformationByItself(Trial& trial)
{
    LoggerBench logger(trial);
    for (const std::int32_t level : {2, 1, 0, -1})
        logger.Writes("a message of level " + std::to_string(level), {.level = level}, "");
}

void MakesNoFileByItself(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    logger.Log({});
    logger.Log({.logger = "Net", .level = LogLevel::Fatal});
    trial.Expect(folder.IsEmpty(), "the current folder to stay empty", "a file in it");
}

struct NamedLevel
{
    std::int32_t level;
    const char* name;
};

void WritesLevelsByNameInTheShortForm(Trial& trial)
{
    constexpr NamedLevel named[] = {{2, "DEBUG"}, {3, "INFO "}, {4, "WARN "}, {5, "ERROR"}, {6, "FATAL"}};
    LoggerBench logger(trial);
    logger.Open("Main");
    for (const auto& [level, name] : named)
        logger.Writes("a message of level " + std::to_string(level), {.level = level},
                      " " + std::string(name) + " [Net] opened\n");
}

void WritesOtherLevelsWithFiveBlanks(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Open("Main");
    for (const std::int32_t level : {7, 0, -1, 100, INT32_MAX, INT32_MIN})
        logger.Writes("a message of level " + std::to_string(level), {.level = level}, "       [Net] opened\n");
}

void PrintsNullTextsAsEmpty(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Open("Main");
    const Message nothing = {.source = nullptr, .scope = nullptr, .file = nullptr, .line = 0, .text = nullptr};
    logger.Writes("a message of null texts", nothing, " INFO  [] \n");
    auto trace = nothing;
    trace.level = LogLevel::Trace;
    logger.Writes("a trace of null texts", trace,
                  " TRACE [] [] [:0] [ThreadID=" + std::to_string(Platform::GetCurrentThreadId()) + "] \n");
}

void DoesNotPrintTheName(Trial& trial)
{
    LoggerBench logger(trial);
    for (const char* const name : {"Main", "Some other name", "", "Default"})
        logger.Writes("a message under the name " + Show(name), {.logger = name}, InfoLine);
}

void WritesMessagesAsTheyAre(Trial& trial)
{
    LoggerBench logger(trial);
    const std::string longText(100'000, 'x');
    for (const char* const text :
         {"100% %s %n %d", "two\nlines", "tab\t$HOME \\n", "W\xC3\xB6rter \xFF", longText.c_str()})
    {
        const auto came = logger.Log({.text = text});
        trial.Equal("the message behind the time", came.substr(std::min(TimeLength, came.size())),
                    " INFO  [Net] " + std::string(text) + "\n");
    }
}

// The second may change while the message is written.
void WritesTheLocalTime(Trial& trial)
{
    const auto now = []
    {
        std::tm local = {};
        char text[80] = {};
        Platform::GetLocalTime(std::time(nullptr), local);
        return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local));
    };
    LoggerBench logger(trial);
    const auto before = now();
    const auto came = logger.Log({}).substr(0, TimeLength);
    const auto after = now();
    trial.Expect(before <= came && came <= after, "the time of a line from " + before + " to " + after, Show(came));
}

constexpr Check Checks[] = {
    {"logger-writes-information-by-itself", "A message of level 3 is logged without any configuration.",
     "Without a configuration messages from level 3 on go to standard output, as time, level, source and message.",
     WritesInformationByItself},
    {"logger-leaves-out-what-is-below-information-by-itself", "Messages below level 3 without any configuration.",
     "Without a configuration the minimum level is 3, and what is below it is not written.",
     LeavesOutWhatIsBelowInformationByItself},
    {"logger-makes-no-file-by-itself", "Messages are logged without any configuration.",
     "Without a configuration nothing goes to a file: no \"log.txt\" appears in the current folder.",
     MakesNoFileByItself},
    {"logger-writes-levels-by-name", "Messages of the levels 2 to 6.",
     "Every level but TRACE has the short form, with its name padded to five characters.",
     WritesLevelsByNameInTheShortForm},
    {"logger-writes-other-levels-with-blanks", "Messages of levels outside 1 to 6.",
     "Any number is a level; one without a name has the short form with five blanks in place of the name.",
     WritesOtherLevelsWithFiveBlanks},
    {"logger-prints-null-texts-as-empty", "Messages whose source, scope, file and text are null.",
     "A null text is printed as an empty one; the brackets around it stay.", PrintsNullTextsAsEmpty},
    {"logger-does-not-print-its-name", "The same message under several logger names.",
     "A logger name chooses the settings and is not printed.", DoesNotPrintTheName},
    {"logger-writes-messages-as-they-are", "Messages with percent signs, line ends, odd bytes and 100000 characters.",
     "The text of a message is written byte for byte, however long it is.", WritesMessagesAsTheyAre},
    {"logger-writes-the-local-time", "The time of a line is compared with the clock.",
     "A line begins with the local time as year-month-day hour:minute:second.", WritesTheLocalTime},
};

}  // namespace

extern const Family LoggerLinesFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
