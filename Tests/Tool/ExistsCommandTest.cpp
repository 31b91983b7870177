// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"

namespace tvx::test
{
namespace
{

constexpr const char SettingsContract[] = "com.talvere.general.tvx.SimpleMapContract/1.1";

TEST(ExistsCommand, NamesTheFileOfTheModuleThatOffersTheExport)
{
    const auto file = GetRealModule("TVXGenericPlugins").string();
    EXPECT_TRUE(Answered(RunTvx({"exists", SettingsMapExport, "-p", file}), file + "\n"));
    EXPECT_TRUE(
        Answered(RunTvx({"exists", SettingsMapExport, "--contract", SettingsContract, "-p", file}), file + "\n"));
}

TEST(ExistsCommand, LooksBesideItself)
{
    const ProgramCopy program({"TVXJsonSerializer"});
    EXPECT_TRUE(Answered(program.Run({"exists", "com.talvere.serializers.JSONSerializer/1.0"}),
                         (program.GetFolder().GetPath() / "TVXJsonSerializer.tvxlib").string() + "\n"));
}

TEST(ExistsCommand, DeniesWhatNoModuleOffers)
{
    const ProgramCopy program({"TVXGenericPlugins"});
    EXPECT_TRUE(Refused(program.Run({"exists", "com.example\n.None/1.0"}), 1,
                        "no module that was found offers \"com.example?.None/1.0\""));
    EXPECT_TRUE(Refused(program.Run({"exists", SettingsContract}), 1,
                        std::string("no module that was found offers \"") + SettingsContract + '"'));
}

TEST(ExistsCommand, SaysWhichContractsTheExportFulfilsInstead)
{
    const auto file = GetTestModule("Right").string();
    EXPECT_TRUE(
        Refused(RunTvx({"exists", "test.Right/1.0", "--contract", "test.Other/1.0", "-p", file}), 1,
                "\"test.Right/1.0\" of " + file + " does not fulfil \"test.Other/1.0\", but test.RightContract/1.0"));
}

TEST(ExistsCommand, NamesWhatCouldNotBeReadWhenTheExportMayBeThere)
{
    const ProgramCopy program({});
    const auto bad = program.GetFolder().Write("bad.tvxlib", "no module").string();
    const auto run = program.Run({"exists", "test.Right/1.0"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(HasInOrder(run.errors, {"tvx: " + bad + " ", "tvx: no module that was found offers"}));
    const auto right = GetTestModule("Right").string();
    EXPECT_TRUE(Answered(program.Run({"exists", "test.Right/1.0", "-p", right}), right + "\n"));
}

}  // namespace
}  // namespace tvx::test
