// SPDX-License-Identifier: MIT
#include "Tool/Checks/LogFolder.h"
#include "Tool/Checks/LoggerFiles.h"

#include <vector>

namespace tvx::check
{

namespace
{

struct FileName
{
    const char* configured;
    const char* expanded;
};

// Each configured name is that of one logger. What it became is what is told to the crash-dump server.
template <std::size_t Count>
void Expand(Trial& trial, const FileName (&names)[Count])
{
    const LogFolder folder;
    LoggerBench logger(trial);
    const auto server = logger.ImportCrashDumpServer();
    const auto configuration = logger.Configure({{"Default\\ToStdOut", false}, {"Default\\ToFile", true}});
    for (const auto& [configured, expanded] : names)
    {
        configuration->values["Logger " + std::string(configured) + "\\Filename"] = configured;
        server->files.clear();
        logger.GetLevel(("Logger " + std::string(configured)).c_str());
        trial.Equal("the file name " + Show(configured), server->files, std::vector<std::string>{expanded});
    }
}

void ReplacesVariables(Trial& trial)
{
    const EnvironmentVariable first("TVX_CHECK_FIRST", "one");
    const EnvironmentVariable second("TVX_CHECK_SECOND", "two");
    Expand(trial, {{"$TVX_CHECK_FIRST.log", "one.log"},
                   {"a-$TVX_CHECK_FIRST", "a-one"},
                   {"$TVX_CHECK_FIRST$TVX_CHECK_SECOND", "onetwo"},
                   {"$TVX_CHECK_FIRST-$TVX_CHECK_FIRST", "one-one"},
                   {"plain.log", "plain.log"}});
}

void TakesTheLongestName(Trial& trial)
{
    const EnvironmentVariable shorter("TVX_CHECK_HOME", "short");
    const EnvironmentVariable longer("TVX_CHECK_HOME_DIR9", "long");
    Expand(trial, {{"$TVX_CHECK_HOME_DIR9.log", "long.log"},
                   {"a$TVX_CHECK_HOME_DIR.log", "a.log"},
                   {"$TVX_CHECK_HOME-DIR.log", "short-DIR.log"},
                   {"$TVX_CHECK_HOME\xC3\xA9.log", "short\xC3\xA9.log"}});
}

void RemovesVariablesThatAreNotThere(Trial& trial)
{
    const EnvironmentVariable empty("TVX_CHECK_EMPTY", "");
    Expand(trial, {{"a$TVX_CHECK_NOT_THERE.log", "a.log"},
                   {"b$TVX_CHECK_EMPTY.log", "b.log"},
                   {"c$TVX_CHECK_NOT_THERE$TVX_CHECK_EMPTY.log", "c.log"}});
}

void ReplacesVariablesInValues(Trial& trial)
{
    const EnvironmentVariable outer("TVX_CHECK_OUTER", "a-$TVX_CHECK_MIDDLE");
    const EnvironmentVariable middle("TVX_CHECK_MIDDLE", "b-$TVX_CHECK_INNER");
    const EnvironmentVariable inner("TVX_CHECK_INNER", "c");
    Expand(trial, {{"$TVX_CHECK_OUTER.log", "a-b-c.log"}});
}

void SearchesAgainFromTheStart(Trial& trial)
{
    const EnvironmentVariable name("TVX_CHECK_NAME", "TVX_CHECK_VALUE");
    const EnvironmentVariable value("TVX_CHECK_VALUE", "found");
    Expand(trial, {{"$$TVX_CHECK_NAME.log", "found.log"}});
}

void LeavesOtherFormsAlone(Trial& trial)
{
    const EnvironmentVariable variable("TVX_CHECK_VALUE", "wrong");
    Expand(trial, {{"${TVX_CHECK_VALUE}.log", "${TVX_CHECK_VALUE}.log"},
                   {"%TVX_CHECK_VALUE%.log", "%TVX_CHECK_VALUE%.log"},
                   {"$(TVX_CHECK_VALUE).log", "$(TVX_CHECK_VALUE).log"},
                   {"a$", "a$"},
                   {"a$.log", "a$.log"},
                   {"~a.log", "~a.log"}});
}

void ReplacesVariablesInTheDefault(Trial& trial)
{
    const EnvironmentVariable variable("TVX_CHECK_VALUE", "default");
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 1, {{"Default\\Filename", "$TVX_CHECK_VALUE.log"}});
    logger.Log({});
    trial.Equal("what is in the expanded default file", WithoutTimes(folder.Read("default.log")), InfoLine);
}

void SharesAFileByItsExpandedName(Trial& trial)
{
    const EnvironmentVariable variable("TVX_CHECK_VALUE", "same");
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 1, {{"Main\\Filename", "same.log"}, {"Net\\Filename", "$TVX_CHECK_VALUE.log"}});
    logger.Log({.logger = "Main", .text = "1"});
    logger.Log({.logger = "Net", .text = "2"});
    trial.Equal("what is in the file", WithoutTimes(folder.Read("same.log")), " INFO  [Net] 1\n INFO  [Net] 2\n");
}

constexpr Check Checks[] = {
    {"logger-file-name-replaces-variables", "File names with variables of the environment at several places.",
     "In a configured file name, a dollar sign with a name stands for the variable's value.", ReplacesVariables},
    {"logger-file-name-takes-the-longest-variable", "Variables of which one name begins like the other.",
     "A variable's name is as many letters, digits and underscores as follow the dollar sign.", TakesTheLongestName},
    {"logger-file-name-removes-absent-variables", "File names with variables that are absent or empty.",
     "A variable that is not there counts as empty.", RemovesVariablesThatAreNotThere},
    {"logger-file-name-replaces-variables-in-values", "A variable whose value names another one, twice.",
     "A value is searched for variables in its turn.", ReplacesVariablesInValues},
    {"logger-file-name-is-searched-again-from-the-start", "A dollar sign stands in front of a variable.",
     "After each replacement the whole text is searched again, so that a dollar sign meets the text that came behind "
     "it.",
     SearchesAgainFromTheStart},
    {"logger-file-name-leaves-other-forms-alone", "Braces, percent signs, and dollar signs without a name.",
     "Nothing but a dollar sign with a name right behind it is replaced.", LeavesOtherFormsAlone},
    {"logger-file-name-of-the-defaults-replaces-variables", "A variable in the file name of the section \"Default\".",
     "The default file name is expanded like that of a name's own section.", ReplacesVariablesInTheDefault},
    {"logger-file-is-shared-by-the-expanded-name", "Two names write to a file that one of them names by a variable.",
     "What counts for sharing a file is its name after the replacement.", SharesAFileByItsExpandedName},
};

}  // namespace

extern const Family LoggerFileNamesFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
