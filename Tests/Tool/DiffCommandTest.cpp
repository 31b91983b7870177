// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

namespace tvx::test
{
namespace
{

using Json = nlohmann::json;

TEST(DiffCommand, FindsNothingBetweenAModuleAndItsCopy)
{
    const ScratchFolder folder;
    const auto real = GetRealModule("TVXGenericPlugins");
    const auto copy = folder.GetPath() / "Copy.tvxlib";
    std::filesystem::copy(real, copy);
    EXPECT_TRUE(Answered(RunTvx({"diff", real.string(), copy.string()}), ""));
}

TEST(DiffCommand, ShowsWhatIsGoneAndWhatIsNew)
{
    const auto left = GetTestModule("Left").string();
    const auto right = GetTestModule("Right").string();
    const auto run = RunTvx({"diff", left, right});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(HasInOrder(run.output,
                           {"--- " + left + "\n+++ " + right + "\n", "- export test.Left/1.0\n",
                            "- export test.Left/1.0 contract test.LeftContract/1.0\n",
                            "- export test.Left/1.0 import Right <- test.RightContract/1.0\n",
                            "- export test.Left/1.0 interface com.talvere.general.tvx.IImportsContainer/1.0\n",
                            "+ export test.Right/1.0\n", "+ export test.Right/1.0 contract test.RightContract/1.0\n"}));
    EXPECT_EQ(run.output.find("symbol GetExport"), std::string::npos) << "both have it";
}

TEST(DiffCommand, ShowsAContractThatChanged)
{
    const ScratchFolder folder;
    auto image = detail::ReadAll(GetTestModule("Right"));
    const std::string contract = "<contract>test.RightContract/1.0";
    image.replace(image.find(contract), contract.size(), "<contract>test.RightContract/1.1");
    const auto changed = folder.Write("Changed.tvxlib", image).string();
    const auto run = RunTvx({"diff", "--json", GetTestModule("Right").string(), changed});
    EXPECT_EQ(run.exitCode, 1);
    const auto diff = Json::parse(run.output);
    EXPECT_EQ(diff["removed"], Json::array({"export test.Right/1.0 contract test.RightContract/1.0"}));
    EXPECT_EQ(diff["added"], Json::array({"export test.Right/1.0 contract test.RightContract/1.1"}));
    EXPECT_EQ(diff["new"], changed);
}

TEST(DiffCommand, ShowsAnExportThatIsNoLongerGiven)
{
    const auto run = RunTvx({"diff", GetTestModule("Right").string(), GetTestModule("Misbehaving").string()});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "");
    EXPECT_NE(run.output.find("+ export test.Null/1.0 is not given\n"), std::string::npos) << run.output;
}

TEST(DiffCommand, RefusesWhatIsNoModule)
{
    const ScratchFolder folder;
    const auto missing = (folder.GetPath() / "missing.tvxlib").string();
    const auto real = GetTestModule("Right").string();
    EXPECT_TRUE(Refused(RunTvx({"diff", missing, real}), 3, missing + " does not exist"));
    EXPECT_TRUE(Refused(RunTvx({"diff", real, missing}), 3, missing + " does not exist"));
    const auto mute = GetTestModule("WithoutGetExport").string();
    EXPECT_TRUE(Refused(RunTvx({"diff", real, mute}), 3, mute + " has no function GetExport"));
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"diff", real}), 2, ""));
}

}  // namespace
}  // namespace tvx::test
