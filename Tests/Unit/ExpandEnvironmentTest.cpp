// SPDX-License-Identifier: MIT
#include "Src/LoggerSettings.h"
#include "Tests/Support/LoggerTesting.h"

#include <gtest/gtest.h>

namespace tvx::test
{

TEST(ExpandEnvironment, LeavesATextWithoutReferencesAlone)
{
    for (const char* const text : {"", "log.txt", "C:\\logs\\a b.txt", "$", "a$", "$$", "$ x", "$-x", "100%"})
        EXPECT_EQ(ExpandEnvironment(text), text);
}

TEST(ExpandEnvironment, PutsTheValueInPlaceOfTheWholeReference)
{
    const ReplacedVariable variable("LOGDIR", "C:\\logs");
    EXPECT_EQ(ExpandEnvironment("$LOGDIR/app.log"), "C:\\logs/app.log");
    EXPECT_EQ(ExpandEnvironment("a$LOGDIR"), "aC:\\logs");
    EXPECT_EQ(ExpandEnvironment("$LOGDIR.$LOGDIR"), "C:\\logs.C:\\logs");
}

TEST(ExpandEnvironment, TakesAnUndefinedVariableForEmpty)
{
    const ReplacedVariable variable("LOGDIR", std::nullopt);
    EXPECT_EQ(ExpandEnvironment("$LOGDIR/app.log"), "/app.log");
    EXPECT_EQ(ExpandEnvironment("$LOGDIR"), "");
}

TEST(ExpandEnvironment, TakesTheLongestName)
{
    const ReplacedVariable home("HOME", "/home/a");
    const ReplacedVariable homeDir("HOME_DIR", "/d");
    EXPECT_EQ(ExpandEnvironment("$HOME_DIR"), "/d");
    EXPECT_EQ(ExpandEnvironment("$HOME-DIR"), "/home/a-DIR");
}

TEST(ExpandEnvironment, TakesNamesOfLettersDigitsAndUnderscores)
{
    const ReplacedVariable digits("9lives_Of", "cat");
    EXPECT_EQ(ExpandEnvironment("$9lives_Of."), "cat.");
    const ReplacedVariable caseMatters("TVX_CASE", "upper");
    EXPECT_EQ(ExpandEnvironment("[$TVX_case]"), "[]");
    EXPECT_EQ(ExpandEnvironment("$\xC3\xA4"), "$\xC3\xA4");
}

TEST(ExpandEnvironment, ExpandsWhatAValueRefersToInItsTurn)
{
    const ReplacedVariable outer("TVX_OUTER", "<$TVX_INNER>");
    const ReplacedVariable inner("TVX_INNER", "in");
    EXPECT_EQ(ExpandEnvironment("$TVX_OUTER/$TVX_INNER"), "<in>/in");
}

TEST(ExpandEnvironment, BeginsAnewAtTheFrontAfterEachReplacement)
{
    // The dollar sign in front and the value behind it make a reference that was not there before.
    const ReplacedVariable name("TVX_NAME", "TVX_VALUE");
    const ReplacedVariable value("TVX_VALUE", "v");
    EXPECT_EQ(ExpandEnvironment("$$TVX_NAME"), "v");
    const ReplacedVariable half("TVX_HALF", "$TVX_");
    EXPECT_EQ(ExpandEnvironment("$TVX_HALF.txt"), ".txt");
    const ReplacedVariable empty("TVX_EMPTY", "");
    EXPECT_EQ(ExpandEnvironment("$$TVX_EMPTY!"), "$!");
}

TEST(ExpandEnvironment, JoinsAValueWithWhatFollowsIt)
{
    const ReplacedVariable half("TVX_HALF", "$TVX");
    const ReplacedVariable joined("TVX", "j");
    EXPECT_EQ(ExpandEnvironment("$TVX_HALF-_NAME"), "j-_NAME");
}

TEST(ExpandEnvironment, KnowsNoOtherForms)
{
    const ReplacedVariable variable("LOGDIR", "x");
    for (const char* const text : {"${LOGDIR}/a", "%LOGDIR%/a", "$(LOGDIR)", "~/a"})
        EXPECT_EQ(ExpandEnvironment(text), text);
}

}  // namespace tvx::test
