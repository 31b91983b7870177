// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

namespace tvx::test
{
namespace
{

using Json = nlohmann::json;
using Arguments = std::vector<std::string>;
using std::filesystem::perms;

// A settings file of one test alone.
class SettingsCommand : public testing::Test
{
protected:
    void Write(const std::string& text) { folder_.Write("settings.json", text); }

    std::string Read() const { return detail::ReadAll(file_); }

    ProgramRun Run(Arguments arguments, Program program = {}) const
    {
        arguments.insert(arguments.begin(), {"settings", file_});
        return RunTvx(std::move(arguments), std::move(program));
    }

    const ScratchFolder folder_;
    const std::string file_ = folder_
                                  .Write("settings.json", R"({
    "Name": "Line 3",
    "Display": { "Width": 1280, "Zoom": { "Minimum": 0.25, "Maximum": "16 times" } },
    "Displays": 2,
    "Flag": true
})")
                                  .string();
};

TEST_F(SettingsCommand, PrintsTheTextOfAKey)
{
    EXPECT_TRUE(Answered(Run({"get", "Name"}), "Line 3\n"));
    EXPECT_TRUE(Answered(Run({"get", "Display\\Zoom\\Minimum"}), "0.25\n"));
    EXPECT_TRUE(Answered(Run({"get", "Flag"}), "true\n"));
    EXPECT_TRUE(Answered(Run({"get", "Name", "--type", "text"}), "Line 3\n"));
}

TEST_F(SettingsCommand, PrintsAValueAsTheTypeAskedFor)
{
    EXPECT_TRUE(Answered(Run({"get", "Display\\Width", "--type", "int"}), "1280\n"));
    EXPECT_TRUE(Answered(Run({"get", "Display\\Zoom\\Minimum", "--type", "int"}), "0\n"));
    EXPECT_TRUE(Answered(Run({"get", "Display\\Zoom\\Maximum", "--type", "int"}), "16\n"));
    EXPECT_TRUE(Answered(Run({"get", "Display\\Zoom\\Minimum", "--type", "double"}), "0.25\n"));
    EXPECT_TRUE(Answered(Run({"get", "Name", "--type", "double"}), "0.0\n"));
}

TEST_F(SettingsCommand, PrintsAValueAsJson)
{
    EXPECT_TRUE(Answered(Run({"get", "Name", "--json"}), "\"Line 3\"\n"));
    EXPECT_TRUE(Answered(Run({"get", "Display\\Width", "--json"}), "\"1280\"\n"));
    EXPECT_TRUE(Answered(Run({"get", "Display\\Width", "--json", "--type", "int"}), "1280\n"));
}

TEST_F(SettingsCommand, SaysNoToAKeyThatIsAbsent)
{
    EXPECT_TRUE(Refused(Run({"get", "Colour"}), 1, "\"Colour\" is absent"));
    EXPECT_TRUE(Refused(Run({"get", "Display"}), 1, "\"Display\" is absent"));  // a path is no key
    EXPECT_TRUE(Refused(Run({"get", ""}), 1, "\"\" is absent"));
    EXPECT_TRUE(Refused(Run({"get", "Colour", "--type", "int"}), 1, "\"Colour\" is absent"));
    EXPECT_TRUE(Refused(Run({"get", "Colour", "--type", "double", "--json"}), 1, "\"Colour\" is absent"));
}

TEST_F(SettingsCommand, ListsTheKeysInTheirOrder)
{
    EXPECT_TRUE(Answered(Run({"list"}), "Display\\Width = 1280\n"
                                        "Display\\Zoom\\Maximum = 16 times\n"
                                        "Display\\Zoom\\Minimum = 0.25\n"
                                        "Displays = 2\n"
                                        "Flag = true\n"
                                        "Name = Line 3\n"));
}

TEST_F(SettingsCommand, ListsTheKeysAtAndBelowAPath)
{
    EXPECT_TRUE(Answered(Run({"list", "Display"}), "Display\\Width = 1280\n"
                                                   "Display\\Zoom\\Maximum = 16 times\n"
                                                   "Display\\Zoom\\Minimum = 0.25\n"));
    EXPECT_TRUE(Answered(Run({"list", "Display\\Width"}), "Display\\Width = 1280\n"));
}

TEST_F(SettingsCommand, ListsKeysAsJson)
{
    const auto run = Run({"list", "Display\\Zoom", "--json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(Json::parse(run.output),
              Json::parse(R"({"Display\\Zoom\\Maximum": "16 times", "Display\\Zoom\\Minimum": "0.25"})"));
}

TEST_F(SettingsCommand, SaysNoToAPathWithoutKeys)
{
    for (const char* const path : {"Colour", "Disp", "Display\\"})
    {
        const auto run = Run({"list", path});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, "");
    }
    const auto json = Run({"list", "Colour", "--json"});
    EXPECT_EQ(json.exitCode, 1);
    EXPECT_EQ(json.output, "{}\n");
}

TEST_F(SettingsCommand, PrintsTheSettingsBelowAPath)
{
    EXPECT_TRUE(Answered(Run({"sub", "Display\\Zoom"}), R"({
    "Maximum": "16 times",
    "Minimum": 0.25
}
)"));
    const auto none = Run({"sub", "Colour"});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.output, "{}\n");
    EXPECT_EQ(none.errors, "");
}

TEST_F(SettingsCommand, PrintsAllSettings)
{
    const auto run = Run({"export"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(Json::parse(run.output), Json::parse(Read()));
}

TEST_F(SettingsCommand, BringsTheRealSettingsThroughUnchanged)
{
    const auto run = RunTvx({"settings", TVX_SETTINGS_FILE, "export"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(Json::parse(run.output), Json::parse(detail::ReadAll(TVX_SETTINGS_FILE)));
}

TEST_F(SettingsCommand, SavesAValueAndKeepsTheRest)
{
    auto wanted = Json::parse(Read());
    EXPECT_TRUE(Answered(Run({"set", "Display\\Zoom\\Minimum", "-0.5"}), ""));
    wanted["Display"]["Zoom"]["Minimum"] = -0.5;
    EXPECT_EQ(Json::parse(Read()), wanted);
    EXPECT_TRUE(Answered(Run({"set", "New\\Key", "a text"}), ""));
    wanted["New"]["Key"] = "a text";
    EXPECT_EQ(Json::parse(Read()), wanted);
    EXPECT_TRUE(Answered(Run({"set", "Name", ""}), ""));
    wanted["Name"] = "";
    EXPECT_EQ(Json::parse(Read()), wanted);
    EXPECT_TRUE(Answered(Run({"get", "New\\Key"}), "a text\n"));
    EXPECT_FALSE(std::filesystem::exists(file_ + ".new"));
}

TEST_F(SettingsCommand, RefusesToSaveWhatNoFileCanSay)
{
    const auto before = Read();
    const std::string cannot = "no settings file can say this map: ";
    EXPECT_TRUE(
        Refused(Run({"set", "Name\\Below", "1"}), 3, cannot + "\"Name\" has a value of its own and others below it"));
    EXPECT_TRUE(
        Refused(Run({"set", "Display", "1"}), 3, cannot + "\"Display\" has a value of its own and others below it"));
    EXPECT_TRUE(Refused(Run({"set", "Name", "\xFF"}), 3, cannot + "invalid UTF-8 byte at index 0: 0xFF"));
    EXPECT_EQ(Read(), before);
}

TEST_F(SettingsCommand, LeavesAFileInAReadOnlyFolderAlone)
{
    const auto before = Read();
    std::filesystem::permissions(folder_.GetPath(), perms::owner_read | perms::owner_exec);
    const bool mayWrite = static_cast<bool>(std::ofstream(folder_.GetPath() / "probe"));
    const auto run = Run({"set", "Name", "other"});
    std::filesystem::permissions(folder_.GetPath(), perms::owner_all);
    if (mayWrite)
        GTEST_SKIP() << "this user may write into every folder";
    EXPECT_TRUE(Refused(run, 3, file_ + " cannot be written"));
    EXPECT_EQ(Read(), before);
    EXPECT_FALSE(std::filesystem::exists(file_ + ".new"));
}

TEST_F(SettingsCommand, RefusesAFileThatCannotBeRead)
{
    const auto missing = (folder_.GetPath() / "missing.json").string();
    const auto path = folder_.GetPath().string();
    for (const Arguments& action : {Arguments{"list"}, {"get", "Name"}, {"set", "Name", "1"}, {"sub", "a"}, {"export"}})
    {
        auto arguments = action;
        arguments.insert(arguments.begin(), {"settings", missing});
        EXPECT_TRUE(Refused(RunTvx(arguments), 3, missing + " does not exist"));
        arguments[1] = path;
        EXPECT_TRUE(Refused(RunTvx(arguments), 3, path + " is a folder"));
    }
    EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(SettingsCommand, RefusesAFileThatHoldsNoSettings)
{
    using namespace std::string_literals;
    for (const auto& text : {""s, "{"s, "[1]"s, "{\"a\": 1}\0"s, "{\"a\": \"\xFF\"}"s, "{\"a\": 1, \"a\": 2}"s})
    {
        Write(text);
        EXPECT_TRUE(RefusedInOneLine(Run({"export"}), 3, file_ + " is no settings file: ")) << text;
        EXPECT_TRUE(RefusedInOneLine(Run({"set", "a", "1"}), 3, file_ + " is no settings file: ")) << text;
        EXPECT_EQ(Read(), text);
    }
}

TEST_F(SettingsCommand, ReadsAPipe)
{
    Program program;
    program.input = file_;
    EXPECT_TRUE(Answered(RunTvx({"settings", "/dev/stdin", "get", "Name"}, program), "Line 3\n"));
}

TEST_F(SettingsCommand, NeverMixesLinesOfModulesIntoItsAnswers)
{
    for (const Arguments& action : {Arguments{"list"},
                                    {"list", "--json"},
                                    {"get", "Name"},
                                    {"set", "Name", "Line 4"},
                                    {"sub", "Display"},
                                    {"export"}})
    {
        const auto run = Run(action);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.output.find("PlugDLL"), std::string::npos);
        EXPECT_EQ(run.errors, "");
    }
}

TEST_F(SettingsCommand, ListsManyKeysInATimeThatGrowsWithTheirNumber)
{
    auto many = Json::object();
    for (int i = 0; i < 20000; ++i)
        many["a rather long key that begins like all the others " + std::to_string(i)] = i;
    Write(many.dump());
    const auto run = Run({"list", "--json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(Json::parse(run.output).size(), 20000U);
}

TEST_F(SettingsCommand, NeedsTheModuleOfSettingsMaps)
{
    const ProgramCopy program({"TVXJsonSerializer"});
    EXPECT_TRUE(Refused(program.Run({"settings", file_, "list"}), 3,
                        "no installed module exports \"" + std::string(SettingsMapExport) + "\""));
    EXPECT_TRUE(
        Answered(program.Run({"settings", "-p", GetRealModule("TVXGenericPlugins").string(), file_, "get", "Name"}),
                 "Line 3\n"));
}

TEST_F(SettingsCommand, NeedsTheModuleThatSettingsMapsImport)
{
    const ProgramCopy program({"TVXGenericPlugins"});
    EXPECT_TRUE(Refused(program.Run({"settings", file_, "list"}), 3,
                        "the export \"" + std::string(SettingsMapExport) +
                            "\" needs the import \"Serializer\", but no installed module fulfils "
                            "\"com.talvere.serializers.JSONSerializerContract/1.0\""));
}

TEST_F(SettingsCommand, BlamesAModuleThatMisbehavesAndShowsWhatItSaid)
{
    const auto run = RunTvx({"settings", "-p", GetTestModule("FalseSettings").string(), file_, "list"});
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_EQ(run.output, "");
    EXPECT_TRUE(run.errors.starts_with("tvx: the export \"" + std::string(SettingsMapExport) +
                                       "\" makes no settings map (result 0)\n"
                                       "FalseSettings: loaded\n"
                                       "FalseSettings: makes something else\n"))
        << run.errors;
}

TEST_F(SettingsCommand, BlamesAMapThatSucceedsWithANull)
{
    struct Row
    {
        const char* call;
        Arguments action;
        const char* complaint;
    };
    const auto before = Read();
    for (const auto& row : {Row{"GetIterator of ", {"list"}, "the map gives no iterator"},
                            Row{"GetIterator of ", {"export"}, "the map gives no iterator"},
                            Row{"GetIterator of ", {"set", "Name", "x"}, "the map gives no iterator"},
                            Row{"GetValue of ", {"list"}, "the map gives no value for its key \"Key\""},
                            Row{"GetValue of ", {"export"}, "the map gives no value for its key \"Key\""},
                            Row{"GetString Name", {"get", "Name"}, "the map gives no text for its key \"Name\""},
                            Row{"GetSubMap Display", {"sub", "Display"}, "the map gives no sub-map, result 102"},
                            Row{"GetIterator of Display", {"sub", "Display"}, "the map gives no iterator"}})
    {
        Program program;
        program.environment["FALSE_SETTINGS"] = row.call;
        auto action = row.action;
        action.insert(action.end(), {"-p", GetTestModule("FalseSettings").string()});
        const auto run = Run(action, program);
        EXPECT_EQ(run.exitCode, 4) << row.call;
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, "tvx: " + std::string(row.complaint) + "\nFalseSettings: loaded\n");
    }
    EXPECT_EQ(Read(), before);
}

}  // namespace
}  // namespace tvx::test
