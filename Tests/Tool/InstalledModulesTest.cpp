// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

namespace tvx::test
{
namespace
{

using Texts = std::vector<std::string>;

// A tree as an installation makes it, with the modules where they belong and others beside the program.
class InstalledTree
{
public:
    InstalledTree(const std::vector<std::filesystem::path>& installed, const std::vector<std::filesystem::path>& beside)
    {
        std::filesystem::create_directories(GetProgramFolder());
        std::filesystem::create_directories(GetModuleFolder());
        std::filesystem::copy(TVX_PROGRAM, GetProgramFolder() / "tvx");
        for (const auto& module : installed)
            std::filesystem::copy(module, GetModuleFolder());
        for (const auto& module : beside)
            std::filesystem::copy(module, GetProgramFolder());
    }

    std::filesystem::path GetProgramFolder() const { return folder_.GetPath() / "prefix/bin"; }
    std::filesystem::path GetModuleFolder() const
    {
        return (GetProgramFolder() / TVX_MODULES_FROM_PROGRAM).lexically_normal();
    }

    // The files found, and nothing to complain about.
    Texts List(const Texts& options) const
    {
        Texts arguments{"list", "--json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        Program program;
        program.file = (GetProgramFolder() / "tvx").string();
        const auto run = RunProgram(program, arguments);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.errors, "");
        const auto list = nlohmann::json::parse(run.output);
        Texts files;
        for (const auto& module : list["modules"])
            files.push_back(module["file"]);
        return files;
    }

private:
    ScratchFolder folder_;
};

TEST(InstalledModules, AreFoundFromTheInstalledProgram)
{
    const InstalledTree tree({GetRealModule("TVXGenericPlugins"), GetTestModule("Right")}, {});
    EXPECT_EQ(tree.List({}), (Texts{(tree.GetModuleFolder() / "Right.tvxlib").string(),
                                    (tree.GetModuleFolder() / "TVXGenericPlugins.tvxlib").string()}));
}

TEST(InstalledModules, ComeAfterAllOthers)
{
    const InstalledTree tree({GetTestModule("Left")}, {GetTestModule("Right")});
    EXPECT_EQ(tree.List({"--path", GetTestModule("Recorder").string()}),
              (Texts{GetTestModule("Recorder").string(), (tree.GetProgramFolder() / "Right.tvxlib").string(),
                     (tree.GetModuleFolder() / "Left.tvxlib").string()}));
}

TEST(InstalledModules, AreNotMissedWhereThereAreNone)
{
    const InstalledTree tree({}, {GetTestModule("Right")});
    std::filesystem::remove(tree.GetModuleFolder());
    EXPECT_EQ(tree.List({}), (Texts{(tree.GetProgramFolder() / "Right.tvxlib").string()}));
}

}  // namespace
}  // namespace tvx::test
