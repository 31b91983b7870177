// SPDX-License-Identifier: MIT
#include "Host/KeySpelling.h"

#include <gtest/gtest.h>

#include <string>

namespace tvx::host
{
namespace
{

TEST(KeySpelling, TellsAnotherCaseOfTheSameWord)
{
    EXPECT_TRUE(IsMisspelt("tofile", "ToFile"));
    EXPECT_TRUE(IsMisspelt("FILENAME", "Filename"));
    EXPECT_TRUE(IsMisspelt("A", "a"));
}

TEST(KeySpelling, AllowsOneMistakeInFourLetters)
{
    for (const char* const text : {"ToFil", "ToFiles", "ToFole", "To_File", "oFile"})
        EXPECT_TRUE(IsMisspelt(text, "ToFile")) << text;
    for (const char* const text : {"Profile", "File", "ToFileIt", "ToFe"})
        EXPECT_FALSE(IsMisspelt(text, "ToFile")) << text;
    EXPECT_TRUE(IsMisspelt("MinLvl", "MinLevel"));
    EXPECT_TRUE(IsMisspelt("MniLevel", "MinLevel"));
    EXPECT_TRUE(IsMisspelt("FlushThreshold", "LogFlushThreshold"));
    EXPECT_FALSE(IsMisspelt("Threshold", "LogFlushThreshold"));
}

TEST(KeySpelling, DoesNotTakeTheWordItselfOrNothingForAMistake)
{
    EXPECT_FALSE(IsMisspelt("ToFile", "ToFile"));
    EXPECT_FALSE(IsMisspelt("", "ToFile"));
    EXPECT_FALSE(IsMisspelt("", ""));
    EXPECT_FALSE(IsMisspelt("a", ""));
    EXPECT_FALSE(IsMisspelt(std::string(1000000, 'T'), "ToFile"));
}

}  // namespace
}  // namespace tvx::host
