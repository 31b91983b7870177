// SPDX-License-Identifier: MIT
#include "Host/VariableExpansion.h"

#include "Src/LoggerSettings.h"
#include "Tests/Support/LoggerTesting.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

namespace tvx::host
{
namespace
{

using Texts = std::vector<std::string>;
using Variables = std::map<std::string, std::string>;

VariableExpansion Expand(const std::string& text, const Variables& variables)
{
    const auto read = [&](const std::string& name)
    {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional<std::string>(found->second);
    };
    return ExpandVariables(text, read);
}

std::string ToText(const std::string& text, const Variables& variables)
{
    const auto expansion = Expand(text, variables);
    EXPECT_TRUE(expansion.loop.empty());
    return expansion.ends ? expansion.text : "does not end";
}

Texts GetLoop(const std::string& text, const Variables& variables)
{
    const auto expansion = Expand(text, variables);
    EXPECT_FALSE(expansion.ends);
    EXPECT_EQ(expansion.text, text);
    return expansion.loop;
}

std::string GetRootedBy(const std::string& text, const Variables& variables)
{
    return Expand(text, variables).rootedBy;
}

TEST(VariableExpansion, ReplacesEachVariableByItsValueOrByNothing)
{
    const Variables variables = {{"A", "1"}, {"AB", "2"}, {"A_9", "3"}, {"9", "4"}, {"E", ""}};
    EXPECT_EQ(ToText("x$A/y$AB/z$A_9/$9.$E$NONE.", variables), "x1/y2/z3/4..");
    EXPECT_EQ(ToText("", variables), "");
    EXPECT_EQ(ToText("plain", variables), "plain");
    EXPECT_EQ(ToText("$A$A", variables), "11");
}

TEST(VariableExpansion, ExpandsValuesInTheirTurn)
{
    EXPECT_EQ(ToText("$A.txt", {{"A", "<$B>"}, {"B", "[$C$C]"}, {"C", "!"}}), "<[!!]>.txt");
}

TEST(VariableExpansion, BeginsAnewFromTheStartSoThatADollarSignMeetsAValue)
{
    EXPECT_EQ(ToText("$$A", {{"A", "B"}, {"B", "end"}}), "end");
    EXPECT_EQ(ToText("$$$A", {{"A", "B"}, {"B", "C"}, {"C", "end"}}), "end");
    EXPECT_EQ(ToText("$$A", {{"A", "A"}}), "A");
    EXPECT_EQ(ToText("$$A.", {}), "$.");
    EXPECT_EQ(ToText("$$E$A", {{"E", ""}, {"A", "B"}, {"B", "end"}}), "end");
}

TEST(VariableExpansion, LeavesOtherFormsAlone)
{
    for (const char* const text : {"${A}", "%A%", "$", "$$", "$-A", "$ A", "a$", "$(A)", "$\xC3\xA4"})
        EXPECT_EQ(ToText(text, {{"A", "1"}}), text);
}

TEST(VariableExpansion, FindsAVariableThatRefersToItself)
{
    EXPECT_EQ(GetLoop("$X", {{"X", "$X"}}), (Texts{"X", "X"}));
    EXPECT_EQ(GetLoop("logs/$X.txt", {{"X", "a$X"}}), (Texts{"X", "X"}));
    EXPECT_EQ(GetLoop("$X", {{"X", "$X$X"}}), (Texts{"X", "X"}));
    EXPECT_EQ(GetLoop("$X", {{"X", "a$X/b"}}), (Texts{"X", "X"}));
    EXPECT_EQ(GetLoop("$PATH", {{"PATH", "/opt:$PATH"}}), (Texts{"PATH", "PATH"}));
}

TEST(VariableExpansion, FindsAVariableThatRefersToItselfThroughOthers)
{
    EXPECT_EQ(GetLoop("$A", {{"A", "$B"}, {"B", "x$C"}, {"C", "$A"}}), (Texts{"A", "B", "C", "A"}));
    EXPECT_EQ(GetLoop("$A", {{"A", "$OK/$B"}, {"OK", "fine"}, {"B", "$B"}}), (Texts{"B", "B"}));
    EXPECT_EQ(GetLoop("$A", {{"A", "$$B"}, {"B", "A"}}), (Texts{"A", "A"}));
}

TEST(VariableExpansion, DoesNotMistakeAVariableThatIsUsedAgainForALoop)
{
    EXPECT_EQ(ToText("$A$B$A", {{"A", "1"}, {"B", "$A$A"}}), "1111");
    EXPECT_EQ(ToText("$V$W", {{"V", "$"}, {"W", "V"}}), "$");
}

TEST(VariableExpansion, FindsAnEndlessExpansionWithoutALoopOfWholeReferences)
{
    // What follows each dollar sign comes from elsewhere each time.
    const Variables variables = {{"A", "B-$"}, {"B", "$$A"}};
    const auto expansion = Expand("$$A", variables);
    EXPECT_EQ(expansion.ends, false);
}

TEST(VariableExpansion, GivesUpOnAnExplosion)
{
    Variables variables = {{"V40", "x"}};
    for (int i = 0; i < 40; ++i)
        variables["V" + std::to_string(i)] = "$V" + std::to_string(i + 1) + "$V" + std::to_string(i + 1);
    EXPECT_EQ(GetLoop("$V0", variables), Texts());
    variables["V40"] = "";
    EXPECT_EQ(GetLoop("$V0", variables), Texts());
    EXPECT_EQ(GetLoop("$V0", {{"V0", std::string(70000, 'x') + "$V1"}}), Texts());
}

TEST(VariableExpansion, GivesUpOnVariablesWithoutEnd)
{
    const auto read = [](const std::string& name) { return std::optional<std::string>("$" + name + "1"); };
    EXPECT_FALSE(ExpandVariables("$X", read).ends);
}

TEST(VariableExpansion, TakesAnyLengthOfTextAndManyVariables)
{
    const std::string text(1000000, '$');
    EXPECT_EQ(ToText(text, {}), text);
    std::string many;
    for (int i = 0; i < 1000; ++i)
        many += "$A.";
    EXPECT_EQ(ToText(many, {{"A", "1"}}).size(), 2000U);
}

TEST(VariableExpansion, NamesTheVariableThatLeavesARootPath)
{
    EXPECT_EQ(GetRootedBy("$LOGDIR/app.log", {}), "LOGDIR");
    EXPECT_EQ(GetRootedBy("$LOGDIR\\app.log", {}), "LOGDIR");
    EXPECT_EQ(GetRootedBy("$LOGDIR/app.log", {{"LOGDIR", ""}}), "LOGDIR");
    EXPECT_EQ(GetRootedBy("$A$B/app.log", {{"A", ""}}), "B");
    EXPECT_EQ(GetRootedBy("$A/app.log", {{"A", "$B"}}), "B");
}

TEST(VariableExpansion, NamesNoneWhereTheRootIsMeantOrNotReached)
{
    EXPECT_EQ(GetRootedBy("/app.log", {}), "");
    EXPECT_EQ(GetRootedBy("$LOGDIR/app.log", {{"LOGDIR", "/var/log"}}), "");
    EXPECT_EQ(GetRootedBy("$LOGDIR/app.log", {{"LOGDIR", "logs"}}), "");
    EXPECT_EQ(GetRootedBy("$A$B/app.log", {{"B", "/var"}}), "");
    EXPECT_EQ(GetRootedBy("$LOGDIR.log", {}), "");
    EXPECT_EQ(GetRootedBy("logs/$A/app.log", {}), "");
    EXPECT_EQ(GetRootedBy("$LOGDIR", {}), "");
}

TEST(VariableExpansion, FindsReferencesInForeignForms)
{
    EXPECT_EQ(FindForeignReference("a/${X}/b"), "${X}");
    EXPECT_EQ(FindForeignReference("%TEMP%\\a"), "%TEMP%");
    EXPECT_EQ(FindForeignReference("${LOGDIR:-/tmp}/a"), "${LOGDIR:-/tmp}");
    EXPECT_EQ(FindForeignReference("%ProgramFiles(x86)%\\a"), "%ProgramFiles(x86)%");
    EXPECT_EQ(FindForeignReference("$A ${} ${B %C %% %D%"), "%D%");
    std::string open;
    for (int count = 0; count < 500000; ++count)
        open += "${";
    EXPECT_EQ(FindForeignReference(open), "");
    EXPECT_EQ(FindForeignReference("100%_sure%"), "%_sure%");
    for (const char* const text : {"", "$A", "$$", "%", "%%", "50%", "${", "${A", "%A", "% A %", "{A}", "$ {A}"})
        EXPECT_EQ(FindForeignReference(text), "") << text;
    EXPECT_EQ(FindForeignReference(std::string(1000000, '%')), "");
}

TEST(VariableExpansion, ReadsTheEnvironmentUnlessToldOtherwise)
{
    const test::ReplacedVariable set("TVX_TEST_SET", "a");
    const test::ReplacedVariable empty("TVX_TEST_EMPTY", "");
    const test::ReplacedVariable unset("TVX_TEST_UNSET", std::nullopt);
    EXPECT_EQ(ReadEnvironmentVariable("TVX_TEST_SET"), "a");
    EXPECT_EQ(ReadEnvironmentVariable("TVX_TEST_EMPTY"), "");
    EXPECT_EQ(ReadEnvironmentVariable("TVX_TEST_UNSET"), std::nullopt);
}

// Values without a dollar sign at their end or that of a later one always come to an end.
TEST(VariableExpansion, AgreesWithTheLogger)
{
    constexpr std::uint32_t seed = 61;
    std::mt19937 random(seed);
    const auto draw = [&](std::size_t limit)
    { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random); };
    const Texts pieces = {"$",        "TVXA", "TVXB", "TVXC", "$TVXA", "$TVXB", "$TVXC",
                          "$TVXNONE", "/",    "-",    "x",    "{",     "%",     ""};
    for (int round = 0; round < 2000; ++round)
    {
        const auto make = [&](std::size_t first)
        {
            std::string text;
            for (std::size_t i = draw(4); i > 0; --i)
                text += pieces[first + draw(pieces.size() - first)];
            return text;
        };
        const test::ReplacedVariable a("TVXA", make(5));
        const test::ReplacedVariable b("TVXB", make(6));
        const test::ReplacedVariable c("TVXC", make(7));
        const auto text = make(0);
        const auto expansion = ExpandVariables(text, ReadEnvironmentVariable);
        ASSERT_TRUE(expansion.ends) << "seed " << seed << ", round " << round << ": " << text;
        ASSERT_EQ(expansion.text, ExpandEnvironment(text)) << "seed " << seed << ", round " << round << ": " << text;
    }
}

}  // namespace
}  // namespace tvx::host
