// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

namespace tvx::test
{
namespace
{

using Json = nlohmann::json;
using Texts = std::vector<std::string>;

constexpr const char RightListed[] = "  test.Right/1.0\n"
                                     "      name Right\n"
                                     "      contract test.RightContract/1.0\n"
                                     "      import Left <- test.LeftContract/1.0\n";

Texts GetFiles(const Json& list)
{
    Texts files;
    for (const auto& module : list["modules"])
        files.push_back(std::filesystem::path(module["file"].get<std::string>()).filename().string());
    return files;
}

TEST(ListCommand, ShowsTheModulesBesideTheProgram)
{
    const ProgramCopy program({"TVXGenericPlugins", "TVXJsonSerializer"});
    const auto run = program.Run({"list"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(HasInOrder(
        run.output, {(program.GetFolder().GetPath() / "TVXGenericPlugins.tvxlib\n").string(),
                     "  com.talvere.general.tvx.GenericStringImplementation/1.0\n",
                     "      name TVX Generic String Implementation\n",
                     "      contract com.talvere.general.tvx.StringContract/1.0\n",
                     "  com.talvere.general.tvx.GenericSimpleMapImplementation/1.1\n",
                     "      format com.talvere.general.tvx.GenericSimpleMapImplementationFormat/1.1\n",
                     "      import Serializer <- com.talvere.serializers.JSONSerializerContract/1.0\n",
                     "      subname Basic Console and File Logger\n", "      copyright Copyright (C) 2026 Talvere\n",
                     "      import LibManager <- com.talvere.general.tvx.LibManagerContract/1.0 (optional)\n",
                     "TVXJsonSerializer.tvxlib\n", "com.talvere.serializers.JSONSerializer/1.0\n"}));
    EXPECT_EQ(run.output.find("PlugDLL"), std::string::npos);
}

TEST(ListCommand, PrintsNothingButJson)
{
    const ProgramCopy program({"TVXGenericPlugins", "TVXJsonSerializer"});
    const auto run = program.Run({"list", "--json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    const auto list = Json::parse(run.output);
    EXPECT_EQ(GetFiles(list), (Texts{"TVXGenericPlugins.tvxlib", "TVXJsonSerializer.tvxlib"}));
    EXPECT_EQ(list["problems"], Json::array());
    const auto map = list["modules"][0]["exports"][2];
    EXPECT_EQ(map["id"], SettingsMapExport);
    EXPECT_EQ(map["contracts"].size(), 4U);
    EXPECT_EQ(map["metadata"]["serid"], "com.talvere.general.tvx.GenericSimpleMapImplementationFormat/1.1");
    EXPECT_EQ(map["imports"], Json::parse(R"([{"property": "Serializer", "optional": false,
                                               "contract": "com.talvere.serializers.JSONSerializerContract/1.0"}])"));
}

TEST(ListCommand, ShowsNothingWhereNoModulesAre)
{
    const ProgramCopy program({});
    EXPECT_TRUE(Answered(program.Run({"list"}), ""));
    const auto run = program.Run({"list", "--json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(Json::parse(run.output), Json::parse(R"({"modules": [], "problems": []})"));
}

TEST(ListCommand, LooksAtItsPathsThenAtTheSearchPathThenBesideItself)
{
    const ProgramCopy program({"TVXJsonSerializer"});
    Program around;
    around.environment["TVX_PATH"] =
        ":" + GetTestModule("Right").string() + "::" + program.GetFolder().GetPath().string();
    const auto run = program.Run(
        {"list", "--json", "--path", GetTestModule("Recorder").string(), "-p", GetTestModule("Left").string()}, around);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(GetFiles(Json::parse(run.output)),
              (Texts{"Recorder.tvxlib", "Left.tvxlib", "Right.tvxlib", "TVXJsonSerializer.tvxlib"}));
}

TEST(ListCommand, RunsNoCodeOfTheModules)
{
    const ProgramCopy program({});
    const auto right = GetTestModule("Right").string();
    EXPECT_TRUE(Answered(program.Run({"list", "-p", right}), right + "\n" + RightListed));
}

TEST(ListCommand, ListsWhatCanBeReadAndComplainsOfTheRest)
{
    const ProgramCopy program({});
    const auto bad = program.GetFolder().Write("bad.tvxlib", "no module").string();
    const auto missing = (program.GetFolder().GetPath() / "missing").string();
    const auto right = GetTestModule("Right").string();
    const auto run = program.Run({"list", "-p", missing, "-p", right});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.output, right + "\n" + RightListed);
    EXPECT_TRUE(HasInOrder(run.errors, {"tvx: " + missing + " does not exist\n", "tvx: " + bad + " "}));
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 2) << run.errors;
}

TEST(ListCommand, ListsProblemsInItsJsonToo)
{
    const ProgramCopy program({});
    const auto missing = (program.GetFolder().GetPath() / "missing").string();
    const auto run = program.Run({"list", "--json", "-p", missing, "-p", GetTestModule("Right").string()});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.errors, "tvx: " + missing + " does not exist\n");
    const auto list = Json::parse(run.output);
    EXPECT_EQ(GetFiles(list), (Texts{"Right.tvxlib"}));
    EXPECT_EQ(list["problems"], Json::array({missing + " does not exist"}));
}

}  // namespace
}  // namespace tvx::test
