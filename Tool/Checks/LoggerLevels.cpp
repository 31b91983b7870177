// SPDX-License-Identifier: MIT
#include "Tool/Checks/LoggerBench.h"

#include <cstdint>

namespace tvx::check
{

namespace
{

void BeginsWithInformation(Trial& trial)
{
    LoggerBench logger(trial);
    for (const char* const name : {"Main", "never used before", ""})
        trial.Equal("GetLevel of the new name " + Show(name), logger.GetLevel(name), 3);
}

void KeepsTheLevelThatWasSet(Trial& trial)
{
    LoggerBench logger(trial);
    for (const std::int32_t level : {1, 6, 0, 7, -1, INT32_MAX, INT32_MIN})
    {
        logger.SetLevel("Main", level);
        trial.Equal("GetLevel after SetLevel", logger.GetLevel("Main"), level);
    }
}

void SetsTheLevelOfOneNameOnly(Trial& trial)
{
    LoggerBench logger(trial);
    std::string name = "Net";
    logger.SetLevel(name.c_str(), LogLevel::Error);
    name = "###";
    trial.Equal("GetLevel of the name", logger.GetLevel("Net"), 5);
    for (const char* const other : {"net", "Net ", "Ne", "Network", "###", ""})
        trial.Equal("GetLevel of the other name " + Show(other), logger.GetLevel(other), 3);
}

void RefusesANullOut(Trial& trial)
{
    LoggerBench logger(trial);
    logger.SetLevel("Main", LogLevel::Error);
    trial.Reports("GetLevel with a null out", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                  [&] { return logger->GetLevel("Main", nullptr); });
    trial.Equal("GetLevel afterwards", logger.GetLevel("Main"), 5);
}

void WritesFromTheMinimumOn(Trial& trial)
{
    LoggerBench logger(trial);
    logger.SetLevel("Main", LogLevel::Warn);
    logger.Writes("a message one below the minimum", {.level = 3}, "");
    logger.Writes("a message at the minimum", {.level = 4}, " WARN  [Net] opened\n");
    logger.Writes("a message one above the minimum", {.level = 5}, " ERROR [Net] opened\n");
}

void ComparesOtherLevelsByNumber(Trial& trial)
{
    LoggerBench logger(trial);
    logger.SetLevel("Main", 7);
    logger.Writes("FATAL under a minimum of 7", {.level = 6}, "");
    logger.Writes("level 7 under a minimum of 7", {.level = 7}, "       [Net] opened\n");
    logger.SetLevel("Main", -5);
    logger.Writes("level -6 under a minimum of -5", {.level = -6}, "");
    logger.Writes("level -5 under a minimum of -5", {.level = -5}, "       [Net] opened\n");
    logger.SetLevel("Main", INT32_MAX);
    logger.Writes("level -1 under the greatest minimum", {.level = -1}, "");
}

void FixesTheSettingsOfAName(Trial& trial, void (*use)(LoggerBench& logger))
{
    LoggerBench logger(trial);
    use(logger);
    const auto configuration = logger.Configure({{"Main\\MinLevel", 6}, {"Default\\ToStdOut", false}});
    configuration->reads.clear();
    logger.Writes("a message under a name that was in use before the configuration", {}, InfoLine);
    trial.Equal("what is read for the name", configuration->reads, std::vector<std::string>());
}

void FixesTheSettingsByLogging(Trial& trial)
{
    FixesTheSettingsOfAName(trial, [](LoggerBench& logger) { logger.Log({}); });
}

void FixesTheSettingsByAMessageThatIsNotWritten(Trial& trial)
{
    FixesTheSettingsOfAName(trial, [](LoggerBench& logger) { logger.Log({.level = LogLevel::Trace}); });
}

void FixesTheSettingsBySettingTheLevel(Trial& trial)
{
    FixesTheSettingsOfAName(trial, [](LoggerBench& logger) { logger.SetLevel("Main", LogLevel::Debug); });
}

void FixesTheSettingsByAskingForTheLevel(Trial& trial)
{
    FixesTheSettingsOfAName(trial, [](LoggerBench& logger) { logger.GetLevel("Main"); });
}

constexpr Check Checks[] = {
    {"logger-level-begins-with-information", "GetLevel of names that were never used.",
     "A new name has the minimum level 3 as long as no configuration says otherwise.", BeginsWithInformation},
    {"logger-level-is-kept", "SetLevel with levels of every kind, and GetLevel.",
     "Every signed number of 32 bits can be a minimum level.", KeepsTheLevelThatWasSet},
    {"logger-level-is-that-of-one-name", "SetLevel of one name, GetLevel of names that look like it.",
     "Every name has its own level; names are compared byte for byte and are copied.", SetsTheLevelOfOneNameOnly},
    {"logger-level-refuses-null-out", "GetLevel with a null out.",
     "A null out gives -4 and one report line, and the level stays.", RefusesANullOut},
    {"logger-level-lets-the-minimum-pass", "Messages around a minimum of 4.",
     "A message is written when its level is the minimum or above it.", WritesFromTheMinimumOn},
    {"logger-level-compares-by-number", "Messages around minima outside 1 to 6.",
     "Levels without a name are compared by their signed number like any others.", ComparesOtherLevelsByNumber},
    {"logger-settings-are-fixed-by-log", "A message, then a configuration, then a message under the same name.",
     "A name keeps the settings of its first use; logging is one.", FixesTheSettingsByLogging},
    {"logger-settings-are-fixed-by-a-filtered-log", "The same, with a first message below the minimum.",
     "A name keeps the settings of its first use, also when nothing was written.",
     FixesTheSettingsByAMessageThatIsNotWritten},
    {"logger-settings-are-fixed-by-set-level", "SetLevel, then a configuration, then a message under the same name.",
     "A name keeps the settings of its first use; SetLevel is one.", FixesTheSettingsBySettingTheLevel},
    {"logger-settings-are-fixed-by-get-level", "GetLevel, then a configuration, then a message under the same name.",
     "A name keeps the settings of its first use; GetLevel is one.", FixesTheSettingsByAskingForTheLevel},
};

}  // namespace

extern const Family LoggerLevelsFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
