// SPDX-License-Identifier: MIT
#include "Tests/Support/LoggerTesting.h"
#include "Tests/Tool/LoggingExamples.h"
#include "Tests/Tool/ToolTest.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <future>
#include <random>
#include <thread>

#include <sys/stat.h>

namespace tvx::test
{
namespace
{

using namespace std::chrono_literals;
using namespace std::string_literals;
using Json = nlohmann::json;
using Arguments = std::vector<std::string>;

// The command in a folder of its own, where its log files are.
class LogCommand : public testing::Test
{
protected:
    // Without the times in the output.
    ProgramRun Log(const std::string& input, Arguments arguments = {}, Program program = {}) const
    {
        program.input = folder_.Write("input", input).string();
        auto run = Run(std::move(arguments), std::move(program));
        run.output = WithoutTimes(run.output);
        return run;
    }

    ProgramRun LogWith(const std::string& configuration, const std::string& input, Arguments arguments = {},
                       Program program = {}) const
    {
        arguments.insert(arguments.begin(), {"--config", folder_.Write("log.ini", configuration).filename().string()});
        return Log(input, std::move(arguments), std::move(program));
    }

    static ProgramRun Run(Arguments arguments, Program program)
    {
        arguments.insert(arguments.begin(), "log");
        return RunTvx(std::move(arguments), std::move(program));
    }

    std::string ReadLog(const std::string& name) const { return WithoutTimes(folder_.Read(name)); }

    const CurrentFolder folder_;
};

// Whether a file gets to hold the text in reasonable time.
bool ComesToHold(const std::string& file, const std::string& text)
{
    for (int i = 0; i < 1000; ++i)
    {
        if (detail::ReadAll(file).find(text) != std::string::npos)
            return true;
        std::this_thread::sleep_for(20ms);
    }
    return false;
}

TEST_F(LogCommand, LogsEachLineAndNothingElse)
{
    EXPECT_TRUE(Answered(Log("first\nsecond\r\n\n third \r \nlast"), " INFO  [tvx] first\n"
                                                                     " INFO  [tvx] second\n"
                                                                     " INFO  [tvx] \n"
                                                                     " INFO  [tvx]  third \r \n"
                                                                     " INFO  [tvx] last\n"));
    EXPECT_TRUE(Answered(Log("first\n"), " INFO  [tvx] first\n"));
    EXPECT_TRUE(Answered(Log("\n"), " INFO  [tvx] \n"));
    EXPECT_TRUE(Answered(Log("\r"), " INFO  [tvx] \r\n"));
}

TEST_F(LogCommand, SaysNothingWhenThereIsNoInput)
{
    EXPECT_TRUE(Answered(Log(""), ""));
    EXPECT_TRUE(Answered(Run({}, {}), ""));
}

TEST_F(LogCommand, TakesLevelsByNameAndByNumber)
{
    const std::pair<const char*, const char*> levels[] = {
        {"trace", ""},
        {"DEBUG", ""},
        {"Info", " INFO  [tvx] m\n"},
        {"warn", " WARN  [tvx] m\n"},
        {"eRRor", " ERROR [tvx] m\n"},
        {"fatal", " FATAL [tvx] m\n"},
        {"2", ""},
        {"3", " INFO  [tvx] m\n"},
        {"6", " FATAL [tvx] m\n"},
        {"7", "       [tvx] m\n"},
        {"2147483647", "       [tvx] m\n"},
        {"0", ""},
        {"-1", ""},
    };
    for (const auto& [level, line] : levels)
        EXPECT_TRUE(Answered(Log("m\n", {"--level", level}), line)) << level;
}

TEST_F(LogCommand, RefusesWhatIsNoLevel)
{
    for (const char* const level : {"loud", "", "3x", "1.5", " 3", "infos", "0x3", "2147483648"})
        EXPECT_TRUE(Refused(Log("m\n", {"--level", level}), 2,
                            "--level: \""s + level + "\" is no level (tvx --help tells more)"));
    EXPECT_TRUE(RefusedInOneLine(Log("m\n", {"--level", "a\nb"}), 2, "--level: \"a?b\" is no level"));
    EXPECT_TRUE(RefusedInOneLine(Log("m\n", {"--level"}), 2, "--level"));
}

TEST_F(LogCommand, NamesTheSource)
{
    EXPECT_TRUE(Answered(Log("m\n", {"--source", "Net"}), " INFO  [Net] m\n"));
    EXPECT_TRUE(Answered(Log("m\n", {"--source", ""}), " INFO  [] m\n"));
}

TEST_F(LogCommand, ShowsTheNumberOfTheLineInTraces)
{
    const auto run = LogWith("[Main]\nMinLevel=1\n", "a\nb\n", {"--level", "trace"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output,
                testing::MatchesRegex(" TRACE \\[tvx\\] \\[log\\] \\[stdin:1\\] \\[ThreadID=[0-9]+\\] a\n"
                                      " TRACE \\[tvx\\] \\[log\\] \\[stdin:2\\] \\[ThreadID=[0-9]+\\] b\n"));
}

// The logger uses the name "Main" itself while it is connected, when its level is low enough.
TEST_F(LogCommand, UsesTheSettingsOfItsName)
{
    constexpr const char configuration[] = "[Main]\nMinLevel=2\n[Net]\nMinLevel=4\n";
    EXPECT_TRUE(Answered(LogWith(configuration, "m\n", {"--level", "debug"}), " DEBUG [tvx] m\n"));
    EXPECT_TRUE(Answered(LogWith(configuration, "m\n", {"--level", "info", "--name", "Net"}), ""));
    EXPECT_TRUE(Answered(LogWith(configuration, "m\n", {"--level", "warn", "--name", "Net"}), " WARN  [tvx] m\n"));
    EXPECT_TRUE(Answered(LogWith(configuration, "m\n", {"--level", "debug", "--name", "Other"}), ""));
}

TEST_F(LogCommand, DoesTheSameWithBothFormsOfAConfiguration)
{
    for (const char* const extension : {".ini", ".json"})
    {
        Program around;
        around.environment["LOG_SUFFIX"] = extension;
        const auto log = [&](const char* name) {
            return Log("m\n", {"--config", GetLoggingExample(extension), "--name", name, "--level", "2"}, around);
        };
        EXPECT_TRUE(Answered(log("Main"), ""));
        EXPECT_TRUE(Answered(log("Net"), " DEBUG [tvx] m\n"));
        EXPECT_EQ(ReadLog("net"s + extension + ".log"), " DEBUG [tvx] m\n");
        EXPECT_FALSE(folder_.Has("audit.log"));
        EXPECT_FALSE(folder_.Has("log.txt"));
    }
}

TEST_F(LogCommand, WritesToAFileAlone)
{
    const auto run = Log("one\ntwo\n", {"--config", GetLoggingExample(".ini"), "--name", "Audit"});
    EXPECT_TRUE(Answered(run, ""));
    EXPECT_EQ(ReadLog("audit.log"), " INFO  [tvx] one\n INFO  [tvx] two\n");
}

TEST_F(LogCommand, WarnsOfWhatIsDangerousInItsConfigurationAndGoesOn)
{
    const auto run = LogWith("[Main]\nMinLevel=high\nFilename=${X}\n", "m\n");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, " INFO  [tvx] m\n");
    EXPECT_EQ(
        run.errors,
        "tvx: log.ini: \"Main\\MinLevel\" has to be a whole number of 32 bits, but is \"high\"\n"
        "tvx: log.ini: \"Main\\Filename\" is \"${X}\": \"${X}\" stays as it is; a variable is written as $NAME\n");
}

TEST_F(LogCommand, RefusesAConfigurationThatCannotBeRead)
{
    EXPECT_TRUE(Refused(Log("m\n", {"--config", "missing.ini"}), 3, "missing.ini does not exist"));
    EXPECT_TRUE(RefusedInOneLine(LogWith("[Net\n", "m\n"), 3, "log.ini is no INI configuration: "));
}

TEST_F(LogCommand, RefusesAConfigurationThatWouldNeverEnd)
{
    Program around;
    around.environment["ROUND"] = "$ROUND";
    const auto run = LogWith("[Net]\nFilename=$ROUND\n", "m\n", {}, around);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors,
              "tvx: log.ini: \"Net\\Filename\" is \"$ROUND\": the logger never ends, for \"ROUND\" refers to "
              "itself: \"ROUND -> ROUND\"\n"
              "tvx: log.ini would keep the logger busy for ever\n");
}

TEST_F(LogCommand, AddsAllMessagesAsJsonLines)
{
    EXPECT_TRUE(Answered(Log("a\n", {"--json", "log.json"}), " INFO  [tvx] a\n"));
    EXPECT_TRUE(Answered(Log("b\n", {"--json", "log.json", "--level", "1", "--name", "Net", "--source", "s"}), ""));
    const auto text = folder_.Read("log.json");
    const auto end = text.find('\n');
    EXPECT_EQ(Json::parse(text.substr(0, end))["message"], "a");
    const auto line = Json::parse(text.substr(end));
    EXPECT_EQ(line["message"], "b");
    EXPECT_EQ(line["level"], "TRACE");
    EXPECT_EQ(line["logger"], "Net");
    EXPECT_EQ(line["source"], "s");
    EXPECT_EQ(line["line"], 1);
}

TEST_F(LogCommand, FailsWhenJsonLinesCannotBeWritten)
{
    EXPECT_TRUE(
        RefusedInOneLine(Log("m\n", {"--json", "missing/log.json"}), 3, "missing/log.json cannot be written: "));
    const auto run = Log("a\nb\n", {"--json", "/dev/full"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.output, " INFO  [tvx] a\n INFO  [tvx] b\n");
    EXPECT_TRUE(run.errors.starts_with("tvx: /dev/full cannot be written: ")) << run.errors;
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1);
}

TEST_F(LogCommand, EndsAMessageAtANulByte)
{
    EXPECT_TRUE(Answered(Log("a\0b\n\0\nc\0"s, {}), " INFO  [tvx] a\n INFO  [tvx] \n INFO  [tvx] c\n"));
}

TEST_F(LogCommand, LogsOneLineForEachOfWhateverBytes)
{
    std::mt19937 random(20261121);
    std::string bytes(300000, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
    bytes.back() = '\n';
    const auto run = Log(bytes);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), std::count(bytes.begin(), bytes.end(), '\n'));
    EXPECT_EQ(run.output.find("(no time)"), std::string::npos);
}

TEST_F(LogCommand, TakesLinesOfAnyLength)
{
    const std::string line(3000000, 'x');
    EXPECT_TRUE(Answered(Log(line + "\r\n" + line), " INFO  [tvx] " + line + "\n INFO  [tvx] " + line + "\n"));
}

// A carriage return and its line feed may come in two parts.
TEST_F(LogCommand, EndsLinesWhereverTheInputIsDivided)
{
    std::string input;
    std::string lines;
    for (std::size_t length = 8180; length < 8200; ++length)
    {
        const std::string line(length, 'x');
        input += line + "\r\n";
        lines += " INFO  [tvx] " + line + "\n";
    }
    EXPECT_TRUE(Answered(Log(input), lines));
}

TEST_F(LogCommand, ShowsEachLineBeforeItWaitsForMore)
{
    const auto pipe = (folder_.GetPath() / "pipe").string();
    const auto output = folder_.Write("output", "").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    Program program;
    program.input = pipe;
    program.output = output;
    auto run = std::async(std::launch::async, [&] { return Run({}, program); });
    std::ofstream input(pipe);
    input << "one\ntw" << std::flush;
    EXPECT_TRUE(ComesToHold(output, "[tvx] one\n"));
    input << "o\nthree\n" << std::flush;
    EXPECT_TRUE(ComesToHold(output, "[tvx] three\n"));
    input.close();
    EXPECT_EQ(run.get().exitCode, 0);
    EXPECT_EQ(ReadLog("output"), " INFO  [tvx] one\n INFO  [tvx] two\n INFO  [tvx] three\n");
}

TEST_F(LogCommand, FailsWhenStandardInputCannotBeRead)
{
    Program folder;
    folder.input = "/";
    EXPECT_TRUE(Refused(Run({}, folder), 3, "standard input cannot be read"));
}

TEST_F(LogCommand, FailsWhenStandardOutputIsFull)
{
    Program full;
    full.output = "/dev/full";
    EXPECT_TRUE(Refused(Log("m\n", {}, full), 3, "standard output cannot be written to"));
    EXPECT_TRUE(Refused(Log(std::string(1000000, '\n'), {}, full), 3, "standard output cannot be written to"));
}

// The number of the standard output that is not there must not become that of the log file.
TEST_F(LogCommand, FailsWhenStandardOutputIsClosed)
{
    Program closed;
    closed.outputClosed = true;
    EXPECT_TRUE(Refused(LogWith("[Main]\nToFile=yes\n", "m\n", {}, closed), 3, "standard output cannot be written to"));
    EXPECT_EQ(ReadLog("log.txt"), " INFO  [tvx] m\n");
}

TEST_F(LogCommand, NeedsNoStandardOutputToWriteToAFile)
{
    Program closed;
    closed.outputClosed = true;
    EXPECT_TRUE(Answered(LogWith("[Main]\nToFile=yes\nToStdOut=no\n", "m\n", {}, closed), ""));
    EXPECT_EQ(ReadLog("log.txt"), " INFO  [tvx] m\n");
}

TEST_F(LogCommand, NeedsTheModule)
{
    const ProgramCopy program({"TVXJsonSerializer"});
    EXPECT_TRUE(
        Refused(program.Run({"log"}), 3, "no installed module exports \"com.talvere.general.tvx.BasicLogger/1.0\""));
}

}  // namespace
}  // namespace tvx::test
