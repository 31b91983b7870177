// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"

namespace tvx::test
{
namespace
{

using Arguments = std::vector<std::string>;

TEST(Program, ShowsTheHelpOfEveryCommand)
{
    const std::pair<Arguments, const char*> commands[] = {
        {{"--help"}, "Exit codes: 0 done, 1 the answer is no"},
        {{"-h"}, "Exit codes: 0 done, 1 the answer is no"},
        {{"list", "--help"}, "--path"},
        {{"info", "--help"}, "FILE"},
        {{"probe", "--help"}, "FILE"},
        {{"exists", "--help"}, "--contract"},
        {{"resolve", "--help"}, "FILE"},
        {{"diff", "--help"}, "OLD"},
        {{"check", "--help"}, "--junit"},
        {{"fuzz", "--help"}, "--reproduce"},
        {{"image", "--help"}, "--swap-channels"},
        {{"tour", "--help"}, "FILE"},
        {{"log", "--help"}, "--level"},
        {{"config", "--help"}, "FILE"},
        {{"config", "--help"}, "a configuration has warnings"},
        {{"completion", "--help"}, "SHELL"},
        {{"settings", "--help"}, "export"},
        {{"settings", "FILE", "get", "--help"}, "--type"},
        {{"settings", "FILE", "set", "--help"}, "VALUE"},
        {{"settings", "FILE", "list", "--help"}, "PATH"},
        {{"settings", "FILE", "sub", "--help"}, "PATH"},
        {{"settings", "FILE", "export", "--help"}, "export"},
    };
    for (const auto& [arguments, part] : commands)
    {
        const auto run = RunTvx(arguments);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_NE(run.output.find(part), std::string::npos) << run.output;
        EXPECT_EQ(run.errors, "");
    }
}

TEST(Program, NamesItsVersion)
{
    const auto run = RunTvx({"--version"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '.'), 2) << run.output;
    EXPECT_TRUE(run.output.ends_with("\n"));
}

TEST(Program, RefusesWrongUsageInOneLine)
{
    const Arguments commands[] = {
        {},
        {"unknown"},
        {"--unknown"},
        {"list", "more"},
        {"list", "--unknown"},
        {"list", "--path"},
        {"info"},
        {"info", "one", "two"},
        {"probe"},
        {"probe", "one", "two"},
        {"probe", "one", "--path", "two"},
        {"image"},
        {"image", "one"},
        {"image", "one", "two", "three"},
        {"image", "one", "two", "--json"},
        {"tour"},
        {"log", "more"},
        {"log", "--config"},
        {"config"},
        {"config", "one", "two"},
        {"config", "one", "--unknown"},
        {"completion"},
        {"completion", "csh"},
        {"completion", "bash", "more"},
        {"settings"},
        {"settings", "FILE"},
        {"settings", "FILE", "unknown"},
        {"settings", "FILE", "get"},
        {"settings", "FILE", "get", "KEY", "more"},
        {"settings", "FILE", "get", "KEY", "--type"},
        {"settings", "FILE", "get", "KEY", "--type", "float"},
        {"settings", "FILE", "get", "KEY", "--type", "in\nt"},
        {"settings", "FILE", "set", "KEY"},
        {"settings", "FILE", "set", "KEY", "VALUE", "more"},
        {"settings", "FILE", "sub"},
        {"settings", "FILE", "export", "--unknown"},
    };
    for (const auto& arguments : commands)
        EXPECT_TRUE(RefusedInOneLine(RunTvx(arguments), 2, "")) << testing::PrintToString(arguments);
}

TEST(Program, FailsWhenStandardOutputIsFull)
{
    Program full;
    full.output = "/dev/full";
    const Arguments commands[] = {
        {"--help"},
        {"--version"},
        {"list"},
        {"list", "--json"},
        {"info", GetRealModule("TVXGenericPlugins").string()},
        {"probe", GetRealModule("TVXGenericPlugins").string()},
        {"completion", "bash"},
        {"settings", TVX_SETTINGS_FILE, "list"},
        {"settings", TVX_SETTINGS_FILE, "get", "Name"},
        {"settings", TVX_SETTINGS_FILE, "export"},
        {"config", TVX_SETTINGS_FILE},
        {"tour", TVX_SETTINGS_FILE},
    };
    for (const auto& arguments : commands)
        EXPECT_TRUE(Refused(RunTvx(arguments, full), 3, "standard output cannot be written to"))
            << testing::PrintToString(arguments);
}

TEST(Program, FailsWhenStandardOutputIsClosed)
{
    Program closed;
    closed.outputClosed = true;
    const Arguments commands[] = {
        {"list"},
        {"info", GetRealModule("TVXGenericPlugins").string()},
        {"probe", GetRealModule("TVXGenericPlugins").string()},
        {"completion", "bash"},
        {"settings", TVX_SETTINGS_FILE, "export"},
        {"config", TVX_SETTINGS_FILE},
        {"tour", TVX_SETTINGS_FILE},
    };
    for (const auto& arguments : commands)
        EXPECT_TRUE(Refused(RunTvx(arguments, closed), 3, "standard output cannot be written to"))
            << testing::PrintToString(arguments);
}

}  // namespace
}  // namespace tvx::test
