// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"
#include "Tool/Fuzz/Replay.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>

namespace tvx::test
{

namespace
{

// A module of Tests/BadModules, and what random walks have to find in it.
struct BadWalk
{
    const char* module;
    const char* walk;
    bool crashed = false;
};

// What a test is called.
void PrintTo(const BadWalk& row, std::ostream* stream)
{
    *stream << row.module;
}

constexpr BadWalk BadWalks[] = {
    {"AbortsInOperation", "map", true},      {"AbsentFails", "settings-map"},     {"AbsentKeyLeavesOut", "map"},
    {"ChangedInBatchMode", "settings-map"},  {"ConvertsVariants", "variant"},     {"CountsLocks", "image"},
    {"ExitsInOperation", "map", true},       {"FiresUpdatedFirst", "collection"}, {"ForgetsToRelease", "collection"},
    {"HidesFilteredMessages", "logger"},     {"IndexOfLeavesOut", "collection"},  {"LeaksStrings", "string"},
    {"NullDereference", "collection", true}, {"PrintsInOperation", "map"},        {"ReportIsMissing", "map"},
    {"ReportIsOfAnotherMacro", "map"},       {"ReversesOneRow", "image"},         {"ThrowsException", "map"},
};

// The one file that fuzz left there.
std::filesystem::path FindReplay(const std::filesystem::path& folder)
{
    const std::vector<std::filesystem::path> files(std::filesystem::directory_iterator(folder), {});
    if (files.size() != 1)
        throw std::runtime_error(std::to_string(files.size()) + " files instead of one replay");
    return files.front();
}

fuzz::Replay ReadReplay(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    const auto replay = fuzz::ParseReplay(text, file.string());
    if (!replay)
        throw std::runtime_error(replay.GetError().message);
    return *replay;
}

class FuzzBadModules : public testing::TestWithParam<BadWalk>
{
protected:
    std::string module_ = (std::filesystem::path(TVX_BAD_MODULE_FOLDER) / GetParam().module).string() + ".tvxlib";
    int exitCode_ = GetParam().crashed ? 4 : 1;
    ScratchFolder folder_;

    ProgramRun Fuzz(const std::string& folder) const
    {
        return RunTvx({"fuzz", module_, "--seconds", "1", "--seed", "7", "-o", (folder_.GetPath() / folder).string()});
    }

    ProgramRun Reproduce(const std::filesystem::path& replay) const
    {
        return RunTvx({"fuzz", module_, "--reproduce", replay.string()});
    }
};

TEST_P(FuzzBadModules, AreFoundByAWalkThatShowsItAgain)
{
    const auto run = Fuzz("found");
    EXPECT_EQ(run.exitCode, exitCode_) << run.output << run.errors;
    const auto sign = std::string(GetParam().crashed ? "crashed  " : "failed  ") + GetParam().walk + ": expected ";
    EXPECT_TRUE(run.output.starts_with(sign)) << run.output;
    const auto replay = FindReplay(folder_.GetPath() / "found");
    EXPECT_NE(run.output.find("again with: tvx fuzz " + module_ + " --reproduce " + replay.string() + "\n"),
              std::string::npos)
        << run.output;
    const auto again = Reproduce(replay);
    EXPECT_EQ(again.exitCode, exitCode_) << again.output << again.errors;
    EXPECT_TRUE(run.output.starts_with(again.output)) << again.output;
}

TEST_P(FuzzBadModules, AreShownByAWalkThatNeedsEachOfItsSteps)
{
    Fuzz("found");
    const auto replay = ReadReplay(FindReplay(folder_.GetPath() / "found"));
    for (std::size_t step = 0; step < replay.steps.size(); ++step)
    {
        auto shorter = replay;
        shorter.steps.erase(shorter.steps.begin() + static_cast<std::ptrdiff_t>(step));
        const auto run = Reproduce(folder_.Write("shorter.replay", fuzz::Describe(shorter)));
        EXPECT_NE(run.exitCode, exitCode_) << fuzz::Describe(shorter) << run.output;
    }
}

TEST_P(FuzzBadModules, AreFoundAlikeWithTheSameSeed)
{
    Fuzz("found");
    Fuzz("again");
    const auto found = FindReplay(folder_.GetPath() / "found");
    const auto again = FindReplay(folder_.GetPath() / "again");
    EXPECT_EQ(found.filename(), again.filename());
    EXPECT_EQ(fuzz::Describe(ReadReplay(found)), fuzz::Describe(ReadReplay(again)));
}

// Of the two sorts of walks over this module one goes on without a finding, and must not until the time is over.
TEST(FuzzTrouble, EndsEverything)
{
    const ScratchFolder folder;
    const auto module = (std::filesystem::path(TVX_BAD_MODULE_FOLDER) / "AbsentFails.tvxlib").string();
    const auto fuzz = [&](const std::string& name, const std::string& seconds) {
        return RunTvx({"fuzz", module, "--jobs", "2", "--seconds", seconds, "-o", (folder.GetPath() / name).string()});
    };
    fuzz("found", "1");
    const auto name = FindReplay(folder.GetPath() / "found").filename();
    std::filesystem::create_directories(folder.GetPath() / "taken" / name);
    const auto start = std::chrono::steady_clock::now();
    const auto run = fuzz("taken", "300");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(HasInOrder(run.errors, {"tvx: ", name.string()}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(2));
}

INSTANTIATE_TEST_SUITE_P(Each, FuzzBadModules, testing::ValuesIn(BadWalks),
                         [](const testing::TestParamInfo<BadWalk>& row) { return std::string(row.param.module); });

}  // namespace

}  // namespace tvx::test
