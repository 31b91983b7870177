// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"
#include "Tool/Fuzz/Shrink.h"

#include <regex>

namespace tvx::test
{
namespace
{

using fuzz::Replay;

Replay ParseGood(const std::string& text)
{
    const auto replay = fuzz::ParseReplay(text, "a.replay");
    EXPECT_TRUE(replay) << replay.GetError().message;
    return *replay;
}

std::string GetProblem(const std::string& text)
{
    const auto replay = fuzz::ParseReplay(text, "a.replay");
    return replay ? "none" : replay.GetError().message;
}

TEST(Replay, IsReadBackAsItWasWritten)
{
    check::Random random(7);
    for (const auto* const walk : fuzz::GetWalks())
    {
        const Replay replay{walk, fuzz::MakeSteps(*walk, random, 50)};
        const auto again = ParseGood(fuzz::Describe(replay));
        EXPECT_EQ(again.walk, walk);
        EXPECT_EQ(again.steps, replay.steps);
    }
}

TEST(Replay, PassesOverCommentsAndEmptyLines)
{
    const auto replay = ParseGood("# found\n\nwalk  collection # which\n  add 1 2\n\nclear 0 4294967295");
    EXPECT_EQ(fuzz::Describe(replay), "walk collection\nadd 1 2\nclear 0 4294967295\n");
}

TEST(Replay, HoldsWalksOneAfterTheOther)
{
    const std::string text = "walk map\nget-value 1 2\nnext-walk 0 0\nget-value 3 4\n";
    const auto replay = ParseGood(text);
    ASSERT_EQ(replay.steps.size(), 3U);
    EXPECT_EQ(replay.steps[1], fuzz::NextWalk);
    EXPECT_EQ(fuzz::Describe(replay), text);
}

TEST(Replay, SaysWhichLineIsWrongAndHow)
{
    EXPECT_EQ(GetProblem(""), "a.replay holds no line \"walk NAME\"");
    EXPECT_EQ(GetProblem("add 1 2\n"), "a.replay:1: a line \"walk NAME\" has to come first");
    EXPECT_EQ(GetProblem("\nwalk nowhere\n"), "a.replay:2: there is no walk \"nowhere\"");
    EXPECT_EQ(GetProblem("walk map\nadd 1 2\n"), "a.replay:2: the walk map has no operation \"add\"");
    const std::string numbers = "a.replay:2: two numbers below 4294967296 have to follow the operation";
    for (const auto* const line :
         {"get-value", "get-value 1", "get-value 1 2 3", "get-value 1 x", "get-value 1 -2", "get-value 4294967296 0"})
        EXPECT_EQ(GetProblem(std::string("walk map\n") + line), numbers) << line;
}

// Any walk in which one step comes before another one fails.
TEST(Shrink, LeavesTheStepsThatAreNeeded)
{
    const auto* const walk = fuzz::FindWalk("collection");
    check::Random random(3);
    Replay replay{walk, fuzz::MakeSteps(*walk, random, 100)};
    replay.steps[20] = {0, 4711, 9};
    replay.steps[80] = {1, 8, 4712};
    int tries = 0;
    const auto fails = [&](const Replay& tried)
    {
        ++tries;
        bool first = false;
        for (const auto& step : tried.steps)
        {
            first = first || step.first == 4711;
            if (first && step.second == 4712)
                return true;
        }
        return false;
    };
    const auto shrunk = fuzz::Shrink(replay, fails);
    EXPECT_EQ(shrunk.steps, (std::vector<fuzz::Step>{{0, 4711, 0}, {1, 0, 4712}}));
    EXPECT_LT(tries, 300);
}

// A step that no longer matters only after a number was made smaller goes, too.
TEST(Shrink, GoesOnUntilNothingChanges)
{
    const auto* const walk = fuzz::FindWalk("collection");
    const auto fails = [](const Replay& tried)
    {
        const auto& steps = tried.steps;
        if (steps.empty() || steps.back().operation != 1)
            return false;
        return steps.back().first == 3 || (steps.size() == 2 && steps.back().first % 0x10000 == 3);
    };
    EXPECT_EQ(fuzz::Shrink({walk, {{0, 1, 2}, {1, 0x30003, 2}}}, fails).steps, (std::vector<fuzz::Step>{{1, 3, 0}}));
}

TEST(Shrink, LeavesNoStepWhereNoneIsNeeded)
{
    const auto* const walk = fuzz::FindWalk("map");
    EXPECT_TRUE(fuzz::Shrink({walk, {{0, 1, 2}, {1, 2, 3}}}, [](const Replay&) { return true; }).steps.empty());
}

TEST(FuzzCommand, FindsNothingInOurModule)
{
    const auto file = GetRealModule("TVXGenericPlugins").string();
    const ScratchFolder folder;
    const auto run = RunTvx({"fuzz", file, "--seconds", "1", "--seed", "42", "-o", folder.GetPath().string()});
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(std::regex_match(
        run.output, std::regex(file + ": [1-9][0-9]* walks of 200 steps over 9 models, 0 findings \\(seed 42\\)\n")))
        << run.output;
}

TEST(FuzzCommand, FollowsAWalkAgain)
{
    const ScratchFolder folder;
    const auto replay = folder.Write("a.replay", "walk map\nset-value 1 2\nget-value 1 0\n").string();
    const auto file = GetRealModule("TVXGenericPlugins").string();
    EXPECT_TRUE(Answered(RunTvx({"fuzz", file, "--reproduce", replay}), ""));
    EXPECT_TRUE(Answered(RunTvx({"fuzz", file, "--reproduce", replay, "--in-process"}), ""));
}

TEST(FuzzCommand, RefusesWhatItCannotFollow)
{
    const ScratchFolder folder;
    const auto replay = folder.Write("a.replay", "walk map\nfly 1 2\n").string();
    const auto file = GetRealModule("TVXGenericPlugins").string();
    const auto problem = replay + ":2: the walk map has no operation \"fly\"";
    EXPECT_TRUE(Refused(RunTvx({"fuzz", file, "--reproduce", replay}), 3, problem));
    EXPECT_TRUE(Refused(RunTvx({"fuzz", file, "--reproduce", replay, "--in-process"}), 3, problem));
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"fuzz", file, "--reproduce", "/no/such.replay"}), 3, "/no/such.replay "));
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"fuzz", file, "--in-process"}), 2, "--in-process requires --reproduce"));
    const auto missing = (folder.GetPath() / "missing.tvxlib").string();
    EXPECT_TRUE(Refused(RunTvx({"fuzz", missing}), 3, missing + " does not exist"));
    const auto right = GetTestModule("Right").string();
    const auto good = folder.Write("good.replay", "walk map\nset-value 1 2\n").string();
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"fuzz", right, "--reproduce", good}), 3, good + " walks over "));
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"fuzz", file, "--seed", "-1"}), 2, "--seed: "));
}

TEST(FuzzCommand, HasNothingToSayOfWhatThereAreNoWalksFor)
{
    const ScratchFolder folder;
    const auto right = GetTestModule("Right").string();
    EXPECT_TRUE(Answered(RunTvx({"fuzz", right, "-o", folder.GetPath().string()}),
                         right + " offers nothing that there are walks for\n"));
}

// Not only when there is something to write.
TEST(FuzzCommand, RefusesAtOnceAFolderThatItCannotWriteTo)
{
    const ScratchFolder folder;
    const auto taken = folder.Write("taken", "").string();
    const auto file = GetRealModule("TVXGenericPlugins").string();
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"fuzz", file, "-o", taken}), 3, "filesystem error: "));
}

}  // namespace
}  // namespace tvx::test
