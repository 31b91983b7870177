// SPDX-License-Identifier: MIT
#include "Tests/Tool/LoggingExamples.h"
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

namespace tvx::test
{
namespace
{

using Json = nlohmann::json;

constexpr const char BuiltIn[] = "Default\n"
                                 "  MinLevel           3 INFO (built in)\n"
                                 "  ToStdOut           true (built in)\n"
                                 "  ToFile             false (built in)\n"
                                 "  LogFlushThreshold  200 (built in)\n"
                                 "  Filename           log.txt (built in)\n";

class ConfigCommand : public testing::Test
{
protected:
    ProgramRun Explain(const std::string& name, const std::string& text, Program program = {}) const
    {
        return RunTvx({"config", folder_.Write(name, text).string()}, std::move(program));
    }

    std::string GetPath(const std::string& name) const { return (folder_.GetPath() / name).string(); }

    const ScratchFolder folder_;
};

Program WithVariable(const std::string& name, const std::string& value)
{
    Program program;
    program.environment[name] = value;
    return program;
}

TEST_F(ConfigCommand, TellsOfEachSectionWhatHoldsAndWhoSaysSo)
{
    const auto run = RunTvx({"config", GetLoggingExample(".ini")}, WithVariable("LOG_SUFFIX", "-7"));
    EXPECT_TRUE(Answered(run, "Default\n"
                              "  MinLevel           3 INFO (of Default)\n"
                              "  ToStdOut           true (built in)\n"
                              "  ToFile             false (built in)\n"
                              "  LogFlushThreshold  200 (built in)\n"
                              "  Filename           log.txt (built in)\n"
                              "Audit\n"
                              "  MinLevel           3 INFO (of Default)\n"
                              "  ToStdOut           false (own)\n"
                              "  ToFile             true (own)\n"
                              "  LogFlushThreshold  200 (built in)\n"
                              "  Filename           audit.log (own)\n"
                              "Net\n"
                              "  MinLevel           1 TRACE (own)\n"
                              "  ToStdOut           true (built in)\n"
                              "  ToFile             true (own)\n"
                              "  LogFlushThreshold  1 (own)\n"
                              "  Filename           net$LOG_SUFFIX.log -> net-7.log (own)\n"));
}

TEST_F(ConfigCommand, TellsTheSameOfBothForms)
{
    for (const std::string option : {"", "--json"})
    {
        std::vector<std::string> arguments = {"config", GetLoggingExample(".ini")};
        if (!option.empty())
            arguments.push_back(option);
        const auto ini = RunTvx(arguments);
        arguments[1] = GetLoggingExample(".json");
        EXPECT_NE(ini.output, "");
        EXPECT_TRUE(Answered(RunTvx(arguments), ini.output));
    }
}

TEST_F(ConfigCommand, PrintsNothingButJson)
{
    const auto run = RunTvx({"config", "--json", GetLoggingExample(".json")}, WithVariable("LOG_SUFFIX", ""));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    const auto report = Json::parse(run.output);
    EXPECT_EQ(report["warnings"], Json::array());
    ASSERT_EQ(report["sections"].size(), 3U);
    EXPECT_EQ(report["sections"][2], Json::parse(R"({
        "name": "Net",
        "MinLevel": {"value": 1, "origin": "own"},
        "ToStdOut": {"value": true, "origin": "built in"},
        "ToFile": {"value": true, "origin": "own"},
        "LogFlushThreshold": {"value": 1, "origin": "own"},
        "Filename": {"value": "net$LOG_SUFFIX.log", "expanded": "net.log", "origin": "own"}})"));
}

TEST_F(ConfigCommand, TellsOfAnEmptyFileWhatIsBuiltIn)
{
    EXPECT_TRUE(Answered(Explain("empty.ini", ""), BuiltIn));
    EXPECT_TRUE(Answered(Explain("empty.json", "{}"), BuiltIn));
    EXPECT_TRUE(Answered(Explain("comment", "; nothing\n"), BuiltIn));
}

TEST_F(ConfigCommand, AnswersNoWhenThereIsSomethingToWarnOf)
{
    const auto run = Explain("log.json", R"({"Default": {"MinLevel": "2", "tofile": true}})");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, BuiltIn);
    const auto file = GetPath("log.json");
    EXPECT_EQ(run.errors, "tvx: " + file +
                              ": \"Default\\MinLevel\" has to be a whole number of 32 bits, but is the text \"2\"\n"
                              "tvx: " +
                              file + ": \"Default\\tofile\" is no key of a logger; is \"ToFile\" meant?\n");
}

TEST_F(ConfigCommand, ListsWarningsInItsJsonToo)
{
    const auto file = folder_.Write("log.ini", "[Net]\nFilename=${HOME}/net.log\n").string();
    const auto warning =
        file + ": \"Net\\Filename\" is \"${HOME}/net.log\": \"${HOME}\" stays as it is; a variable is written as $NAME";
    const auto run = RunTvx({"config", file, "--json"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "tvx: " + warning + "\n");
    EXPECT_EQ(Json::parse(run.output)["warnings"], Json::array({warning}));
}

TEST_F(ConfigCommand, ComesToAnEndWhereTheLoggerDoesNot)
{
    const auto around = WithVariable("ROUND", "a$ROUND");
    const auto run = Explain("log.ini", "[Net]\nFilename=$ROUND\n", around);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(HasInOrder(run.output, {"Net\n", "  Filename           $ROUND -> (never ends) (own)\n"}));
    EXPECT_TRUE(HasInOrder(run.errors, {"the logger never ends", "\"ROUND -> ROUND\"\n"}));
    const auto json = Json::parse(RunTvx({"config", "--json", GetPath("log.ini")}, around).output);
    EXPECT_EQ(json["sections"][1]["Filename"]["expanded"], nullptr);
}

TEST_F(ConfigCommand, ShowsLevelsWithoutANameAsNumbers)
{
    const auto run = Explain("log.ini", "[Net]\nMinLevel=-7\n");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(HasInOrder(run.output, {"Net\n  MinLevel           -7 (own)\n"}));
}

TEST_F(ConfigCommand, KeepsToItsLinesWhateverTheTextsHold)
{
    const auto run = Explain("log.json", R"({"A\n\u001b[2J": {"Filename": "a\rb"}})");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(HasInOrder(run.output, {"\nA??[2J\n", "  Filename           a?b (own)\n"}));
}

TEST_F(ConfigCommand, PrintsJsonAlsoForTextsThatAreNoUtf8)
{
    const auto file = folder_.Write("log.ini", "[Net]\nFilename=\xE4\n").string();
    const auto run = RunTvx({"config", file, "--json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(Json::parse(run.output)["sections"][1]["Filename"]["value"], "\xEF\xBF\xBD");
}

TEST_F(ConfigCommand, RefusesWhatItCannotRead)
{
    const auto missing = GetPath("missing.ini");
    EXPECT_TRUE(Refused(RunTvx({"config", missing}), 3, missing + " does not exist"));
    EXPECT_TRUE(Refused(RunTvx({"config", missing, "--json"}), 3, missing + " does not exist"));
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"config", folder_.GetPath().string()}), 3, folder_.GetPath().string()));
}

TEST_F(ConfigCommand, RefusesWhatIsNoConfiguration)
{
    const auto json = GetPath("bad.json");
    const auto ini = GetPath("bad.ini");
    for (const std::string text : {"", "[]", "{\"a\":", "{\"a\": 1, \"a\": 2}", "{\"a\\\\b\": 1}"})
        EXPECT_TRUE(RefusedInOneLine(Explain("bad.json", text), 3, json + " is no JSON configuration: ")) << text;
    for (const std::string text : {"[Net\n", "MinLevel\n", "[Net]\na=1\na=2\n", "[Net] MinLevel=1\n"})
        EXPECT_TRUE(RefusedInOneLine(Explain("bad.ini", text), 3, ini + " is no INI configuration: ")) << text;
    EXPECT_TRUE(RefusedInOneLine(Explain("bad.ini", std::string("[Net]\na=\0\n", 10)), 3, ini + " is no INI"));
}

}  // namespace
}  // namespace tvx::test
