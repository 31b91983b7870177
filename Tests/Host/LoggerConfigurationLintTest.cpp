// SPDX-License-Identifier: MIT
#include "Host/LoggerConfigurationLint.h"

#include "Helpers/Ref.h"
#include "Src/LoggerSettings.h"
#include "Tests/Support/LoggerTesting.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tvx::host
{
namespace
{

using Texts = std::vector<std::string>;
using Variables = std::map<std::string, std::string>;

LoggerConfigurationReport LintText(const std::string& text, ConfigurationFormat format, const Variables& variables)
{
    const auto entries = ParseConfiguration(text, format, "file");
    EXPECT_TRUE(entries) << entries.GetError().message;
    const auto read = [&](const std::string& name)
    {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional<std::string>(found->second);
    };
    return LintLoggerConfiguration(*MakeRef<Configuration>("file", *entries), read);
}

LoggerConfigurationReport Lint(const std::string& ini, const Variables& variables = {})
{
    return LintText(ini, ConfigurationFormat::Ini, variables);
}

Texts Warnings(const std::string& ini, const Variables& variables = {})
{
    return Lint(ini, variables).warnings;
}

template <class T>
std::string Show(const OriginatedValue<T>& value)
{
    constexpr const char* origins[] = {" built in", " of Default", " own"};
    std::ostringstream text;
    text << std::boolalpha << value.value << origins[static_cast<int>(value.origin)];
    return text.str();
}

std::string Show(const LoggerSectionMeaning& section)
{
    return section.name + ": " + Show(section.minLevel) + ", " + Show(section.toStdOut) + ", " + Show(section.toFile) +
           ", " + Show(section.logFlushThreshold) + ", " + Show(section.filename) + " -> " +
           section.expandedFilename.value_or("(never ends)");
}

Texts Meanings(const LoggerConfigurationReport& report)
{
    Texts texts;
    for (const auto& section : report.sections)
        texts.push_back(Show(section));
    return texts;
}

// Sections that write to files of these names.
std::string Files(const Texts& names)
{
    std::string ini;
    for (std::size_t i = 0; i < names.size(); ++i)
        ini += "[S" + std::to_string(i) + "]\nToFile=yes\nFilename=" + names[i] + "\n";
    return ini;
}

TEST(LoggerConfigurationLint, GivesTheBuiltInValuesOfAnEmptyFile)
{
    const auto report = Lint("");
    EXPECT_EQ(Meanings(report),
              Texts{"Default: 3 built in, true built in, false built in, 200 built in, log.txt built in "
                    "-> log.txt"});
    EXPECT_EQ(report.warnings, Texts());
}

TEST(LoggerConfigurationLint, SaysOfEachValueWhereItComesFrom)
{
    const auto report = Lint("[Net]\nToFile=yes\nFilename=$N/net.log\n"
                             "[Default]\nMinLevel=2\nFilename=$D.log\n"
                             "[Main]\nMinLevel=5\nToStdOut=no\nLogFlushThreshold=0\n",
                             {{"N", "logs"}, {"D", "all"}});
    EXPECT_EQ(Meanings(report),
              (Texts{"Default: 2 of Default, true built in, false built in, 200 built in, $D.log of Default -> all.log",
                     "Main: 5 own, false own, false built in, 0 own, $D.log of Default -> all.log",
                     "Net: 2 of Default, true built in, true own, 200 built in, $N/net.log own -> logs/net.log"}));
    EXPECT_EQ(report.warnings, Texts());
}

TEST(LoggerConfigurationLint, TakesSectionsWithinSectionsForLoggersOfThatPath)
{
    const auto report =
        LintText(R"({"A": {"B": {"MinLevel": 1}}, "Empty": {}, "": {"MinLevel": 2}})", ConfigurationFormat::Json, {});
    EXPECT_EQ(Meanings(report),
              (Texts{"Default: 3 built in, true built in, false built in, 200 built in, log.txt built in -> log.txt",
                     ": 2 own, true built in, false built in, 200 built in, log.txt built in -> log.txt",
                     "A\\B: 1 own, true built in, false built in, 200 built in, log.txt built in -> log.txt"}));
}

TEST(LoggerConfigurationLint, KeepsTheValueThatTheLoggerKeepsForOneOfAnotherType)
{
    const auto report =
        LintText(R"({"Default": {"MinLevel": "2", "ToFile": 1, "Filename": 3}, "Net": {"MinLevel": 1.5}})",
                 ConfigurationFormat::Json, {});
    EXPECT_EQ(Meanings(report),
              (Texts{"Default: 3 built in, true built in, false built in, 200 built in, log.txt built in -> log.txt",
                     "Net: 3 built in, true built in, false built in, 200 built in, log.txt built in -> log.txt"}));
    EXPECT_EQ(report.warnings,
              (Texts{R"(file: "Default\MinLevel" has to be a whole number of 32 bits, but is the text "2")",
                     R"(file: "Default\ToFile" has to be true or false, but is 1)",
                     R"(file: "Default\Filename" has to be a text, but is 3)",
                     R"(file: "Net\MinLevel" has to be a whole number of 32 bits, but is 1.5)"}));
}

TEST(LoggerConfigurationLint, WarnsOfAVariableThatRefersToItself)
{
    const Variables variables = {{"X", "a$X"}, {"A", "$B"}, {"B", "$A"}};
    const auto report = Lint("[Net]\nFilename=$X.log\n[Web]\nFilename=logs/$A\n", variables);
    EXPECT_EQ(
        report.warnings,
        (Texts{
            R"(file: "Net\Filename" is "$X.log": the logger never ends, for "X" refers to itself: "X -> X")",
            R"(file: "Web\Filename" is "logs/$A": the logger never ends, for "A" refers to itself: "A -> B -> A")"}));
    EXPECT_EQ(report.sections.at(1).expandedFilename, std::nullopt);
}

TEST(LoggerConfigurationLint, WarnsOfVariablesWithoutEnd)
{
    Variables variables = {{"V40", "x"}};
    for (int i = 0; i < 40; ++i)
        variables["V" + std::to_string(i)] = "$V" + std::to_string(i + 1) + "$V" + std::to_string(i + 1);
    EXPECT_EQ(Warnings("[Net]\nFilename=$V0\n", variables),
              Texts{R"(file: "Net\Filename" is "$V0": its variables have no end, or none that the logger comes to in )"
                    "reasonable time"});
}

TEST(LoggerConfigurationLint, WarnsOfAnUnsetVariableThatLeavesARootPath)
{
    EXPECT_EQ(
        Warnings("[Net]\nFilename=$LOGDIR/app.log\n"),
        Texts{R"(file: "Net\Filename" is "$LOGDIR/app.log": "LOGDIR" is not set or empty, so the file is "/app.log", )"
              "at the root"});
    EXPECT_EQ(Warnings("[Net]\nFilename=$LOGDIR/app.log\n", {{"LOGDIR", "/var/log"}}), Texts());
    EXPECT_EQ(Warnings("[Net]\nFilename=/app.log\n"), Texts());
}

TEST(LoggerConfigurationLint, WarnsOfANameOfWhichNothingIsLeft)
{
    EXPECT_EQ(Warnings("[Net]\nFilename=$LOG\n"),
              Texts{R"(file: "Net\Filename" is "$LOG": that leaves no name, so nothing is written to a file)"});
    EXPECT_EQ(Warnings("[Net]\nFilename=\n").size(), 1U);
}

TEST(LoggerConfigurationLint, WarnsOfVariablesInForeignForms)
{
    EXPECT_EQ(
        Warnings("[Net]\nFilename=${HOME}/a.log\n[Web]\nFilename=%TEMP%\\a.log\n[Way]\nFilename=$A\n",
                 {{"A", "${B}"}, {"HOME", "/home"}, {"TEMP", "/tmp"}}),
        (Texts{R"(file: "Net\Filename" is "${HOME}/a.log": "${HOME}" stays as it is; a variable is written as $NAME)",
               R"(file: "Way\Filename" is "$A": "${B}" stays as it is; a variable is written as $NAME)",
               R"(file: "Web\Filename" is "%TEMP%\a.log": "%TEMP%" stays as it is; a variable is written as $NAME)"}));
}

TEST(LoggerConfigurationLint, WarnsOfAFilenameOnceAlsoWhenOthersTakeItOver)
{
    EXPECT_EQ(Warnings("[Default]\nFilename=${X}\nMinLevel=9\n[Net]\nToFile=yes\n[Web]\nToFile=yes\n").size(), 2U);
}

TEST(LoggerConfigurationLint, WarnsOfTwoSpellingsOfOneFile)
{
    EXPECT_EQ(
        Warnings(Files({"log.txt", "./log.txt"})),
        Texts{R"(file: "./log.txt" of section "S1" and "log.txt" of section "S0" are one file; each that is opened )"
              "empties what was written before"});
    EXPECT_EQ(Warnings(Files({"log.txt", "a/../log.txt", "a//b", "a/b", "a/./b", "c"})).size(), 2U);
    EXPECT_EQ(Warnings(Files({"log.txt", (std::filesystem::current_path() / "log.txt").string()})).size(), 1U);
    EXPECT_EQ(Warnings(Files({"$A.txt", "./log.txt"}), {{"A", "log"}}).size(), 1U);
}

TEST(LoggerConfigurationLint, WarnsOfASpellingAgainstTheDefaults)
{
    EXPECT_EQ(
        Warnings("[Default]\nToFile=yes\n[Net]\nFilename=./log.txt\n"),
        Texts{R"(file: "./log.txt" of section "Net" and "log.txt" of section "Default" are one file; each that is )"
              "opened empties what was written before"});
}

TEST(LoggerConfigurationLint, SeesThroughLinks)
{
    const test::ScratchFolder folder;
    const auto file = folder.Write("log.txt", "");
    const auto link = folder.GetPath() / "link";
    std::filesystem::create_symlink(folder.GetPath(), link);
    EXPECT_EQ(Warnings(Files({file.string(), (link / "log.txt").string()})).size(), 1U);
    EXPECT_EQ(Warnings(Files({file.string(), (link / "other.txt").string()})), Texts());
}

TEST(LoggerConfigurationLint, TakesLinksThatGoRoundForNamesOfTheirOwn)
{
    const test::ScratchFolder folder;
    const auto link = folder.GetPath() / "link";
    std::filesystem::create_symlink(link, link);
    EXPECT_EQ(Warnings(Files({(link / "a").string(), (link / "b").string()})), Texts());
}

TEST(LoggerConfigurationLint, DoesNotWarnOfFilesThatAreSharedOrNotWritten)
{
    EXPECT_EQ(Warnings(Files({"log.txt", "log.txt", "other.txt"})), Texts());
    EXPECT_EQ(Warnings("[A]\nFilename=log.txt\nToFile=yes\n[B]\nFilename=./log.txt\n"), Texts());
    EXPECT_EQ(Warnings(Files({"$X", "$X"}), {{"X", "$X"}}).size(), 2U);
}

TEST(LoggerConfigurationLint, WarnsOfMisspeltKeys)
{
    EXPECT_EQ(Warnings("[Net]\nminlevel=2\nToStdout=no\nTo_File=yes\nFlushThreshold=1\nFileName=a\nExposure=850\n"),
              (Texts{R"(file: "Net\FileName" is no key of a logger; is "Filename" meant?)",
                     R"(file: "Net\FlushThreshold" is no key of a logger; is "LogFlushThreshold" meant?)",
                     R"(file: "Net\ToStdout" is no key of a logger; is "ToStdOut" meant?)",
                     R"(file: "Net\To_File" is no key of a logger; is "ToFile" meant?)",
                     R"(file: "Net\minlevel" is no key of a logger; is "MinLevel" meant?)"}));
    EXPECT_EQ(Warnings("[Camera]\nProfile=a\nFile=b\nLevel=c\nName=d\n"), Texts());
}

TEST(LoggerConfigurationLint, WarnsOfKeysOutsideAllSections)
{
    EXPECT_EQ(Warnings("MinLevel=2\ntofile=yes\nName=a\n"),
              (Texts{R"(file: "MinLevel" stands in no section, so no logger reads it)",
                     R"(file: "tofile" stands in no section, so no logger reads it)"}));
}

TEST(LoggerConfigurationLint, WarnsOfAMisspeltDefault)
{
    EXPECT_EQ(Warnings("[default]\nMinLevel=2\n[Net]\nMinLevel=2\n"),
              Texts{R"(file: the section "default" is that of a logger of this name; the defaults are in "Default")"});
    EXPECT_EQ(Warnings("[Defaults]\nMinLevel=2\n").size(), 1U);
}

TEST(LoggerConfigurationLint, WarnsOfAMinLevelThatIsNoLevel)
{
    EXPECT_EQ(
        Warnings("[A]\nMinLevel=0\n[B]\nMinLevel=7\n[C]\nMinLevel=-1\n[D]\nMinLevel=1\n[E]\nMinLevel=6\n"),
        (Texts{R"(file: "A\MinLevel" is 0, no level from 1 to 6)", R"(file: "B\MinLevel" is 7, no level from 1 to 6)",
               R"(file: "C\MinLevel" is -1, no level from 1 to 6)"}));
}

TEST(LoggerConfigurationLint, AllowsEveryFlushThreshold)
{
    EXPECT_EQ(Warnings("[A]\nLogFlushThreshold=1\n[B]\nLogFlushThreshold=0\n[C]\nLogFlushThreshold=-5\n"), Texts());
}

TEST(LoggerConfigurationLint, WarnsInShortLinesWhateverTheFileHolds)
{
    const std::string name(100000, 'n');
    const auto warnings = Warnings("[" + name + "\x1B]\nMinLevel=0\ntofile=x\nFilename=$X" + name + "/\n");
    EXPECT_EQ(warnings.size(), 3U);
    for (const auto& warning : warnings)
    {
        EXPECT_LT(warning.size(), 600U);
        EXPECT_EQ(warning.find('\x1B'), std::string::npos);
    }
}

TEST(LoggerConfigurationLint, LintsManySectionsInReasonableTime)
{
    std::string ini;
    for (int i = 0; i < 2000; ++i)
        ini += "[S" + std::to_string(i) + "]\nToFile=yes\nFilename=" + (i % 2 == 0 ? "" : "./") +
               std::to_string(i / 2) + "\n";
    EXPECT_EQ(Warnings(ini).size(), 1000U);
}

TEST(LoggerConfigurationLint, ReadsTheEnvironmentUnlessToldOtherwise)
{
    const test::ReplacedVariable set("TVX_TEST_NAME", "app");
    const auto entries = ParseConfiguration("[Net]\nFilename=$TVX_TEST_NAME.log\n", ConfigurationFormat::Ini, "file");
    const auto report = LintLoggerConfiguration(*MakeRef<Configuration>("file", *entries));
    EXPECT_EQ(report.sections.at(1).expandedFilename, "app.log");
}

// The host knows the module by its interfaces only, so the two lists of built-in values and keys are compared here.
TEST(LoggerConfigurationLint, AgreesWithTheModulesLogger)
{
    const auto entries =
        ParseConfiguration("[Net]\nMinLevel=5\nToStdOut=off\nToFile=on\nLogFlushThreshold=7\nFilename=a.txt",
                           ConfigurationFormat::Ini, "file");
    const auto configuration = MakeRef<Configuration>("file", *entries);
    for (const auto& section : LintLoggerConfiguration(*configuration).sections)
    {
        LoggerSettings settings;
        ReadSection(*configuration, section.name, settings);
        EXPECT_EQ(section.minLevel.value, settings.minLevel);
        EXPECT_EQ(section.toStdOut.value, settings.toStdOut);
        EXPECT_EQ(section.toFile.value, settings.toFile);
        EXPECT_EQ(section.logFlushThreshold.value, settings.logFlushThreshold);
        EXPECT_EQ(section.expandedFilename, settings.filename);
    }
}

}  // namespace
}  // namespace tvx::host
