// SPDX-License-Identifier: MIT
#include "Tests/Tool/BadModules.h"
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

namespace tvx::test
{

namespace
{

// What tvx check said of a module.
struct CheckRun
{
    int exitCode;
    std::size_t passed;
    std::set<std::string> findings;  // "failed NAME" and the like; a check that passed or was skipped is none
    std::string messages;            // of the findings
};

CheckRun Check(const std::filesystem::path& file, const char* timeout, const std::vector<std::string>& selection)
{
    std::vector<std::string> arguments = {"check", file.string(), "--json", "--timeout", timeout};
    for (const auto& pattern : selection)
        arguments.insert(arguments.end(), {"--only", pattern});
    const auto run = RunTvx(arguments);
    CheckRun checked{run.exitCode, 0, {}, run.errors};
    const auto report = nlohmann::json::parse(run.output, nullptr, false);
    if (report.is_discarded())
        throw std::runtime_error("tvx check prints no JSON: " + run.output + run.errors);
    checked.passed = report["summary"]["passed"].get<std::size_t>();
    for (const auto& check : report["checks"])
    {
        const auto result = check["result"].get<std::string>();
        if (result == "passed" || result == "skipped")
            continue;
        const auto name = check["name"].get<std::string>();
        checked.findings.insert(result + " " + name);
        checked.messages += name + ": " + check["message"].get<std::string>() + "\n";
    }
    return checked;
}

std::filesystem::path GetBadModule(const std::string& name)
{
    return std::filesystem::path(TVX_BAD_MODULE_FOLDER) / (name + ".tvxlib");
}

class BadModules : public testing::TestWithParam<BadModule>
{
};

TEST_P(BadModules, AreFoundByExactlyTheChecksThatShouldFindThem)
{
    const auto& [name, exitCode, findings, selection, timeout] = GetParam();
    const auto run = Check(GetBadModule(name), timeout, selection);
    EXPECT_EQ(run.findings, findings) << run.messages;
    EXPECT_EQ(run.exitCode, exitCode);
}

INSTANTIATE_TEST_SUITE_P(Each, BadModules, testing::ValuesIn(GetBadModules()),
                         [](const testing::TestParamInfo<BadModule>& row) { return std::string(row.param.name); });

// Also where it is not the check of the loading that was selected.
TEST(UnloadableModules, AreToldSoWhereLoadingIsNeeded)
{
    EXPECT_EQ(Check(GetBadModule("NeedsMissingFunction"), "60", {"exports"}).exitCode, 3);
    EXPECT_EQ(Check(GetBadModule("CrashesAtLoad"), "60", {"exports"}).exitCode, 4);
    EXPECT_EQ(Check(GetBadModule("CrashesAtLoad"), "60", {"exports"}).findings, std::set<std::string>());
    const auto run = RunTvx({"check", GetBadModule("CrashesAtLoad").string(), "--only", "exports"});
    EXPECT_TRUE(HasInOrder(run.output, {"checks: the module cannot be loaded: expected the check to end"}));
}

// It would crash.
TEST(UnloadableModules, AreNotLoadedForTheirDocument)
{
    const auto run = Check(GetBadModule("CrashesAtLoad"), "60", {"document", "load-exports-get-export-only"});
    EXPECT_EQ(run.exitCode, 0) << run.messages;
    EXPECT_GE(run.passed, 40u);
}

TEST(RealModules, NoCheckFindsAnythingInTheGenericPlugins)
{
    const auto run = Check(GetRealModule("TVXGenericPlugins"), "60", {});
    EXPECT_EQ(run.findings, std::set<std::string>()) << run.messages;
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_GE(run.passed, 250u);
}

TEST(RealModules, NoCheckFindsAnythingInTheSerializer)
{
    const auto run = Check(GetRealModule("TVXJsonSerializer"), "60", {});
    EXPECT_EQ(run.findings, std::set<std::string>()) << run.messages;
    EXPECT_EQ(run.exitCode, 0);
}

}  // namespace

}  // namespace tvx::test
