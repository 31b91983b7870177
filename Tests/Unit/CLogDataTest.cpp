// SPDX-License-Identifier: MIT
#include "Src/CLogData.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <string>

namespace tvx::test
{

namespace
{

// The texts of a record in the order of its operations, null as "(null)".
std::vector<std::string> TextsOf(ILogData& record)
{
    std::vector<std::string> texts;
    for (const char* const text :
         {record.GetLoggerName(), record.GetSource(), record.GetScope(), record.GetFile(), record.GetMessage()})
        texts.emplace_back(text == nullptr ? "(null)" : text);
    return texts;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(CLogData, GivesWhatItWasMadeOf)
{
    const auto record = MakeRef<CLogData>(LogEntry{"Main", 2, "source", "scope", "a/file.cpp", 7, "message"});
    EXPECT_EQ(TextsOf(*record), (Texts{"Main", "source", "scope", "a/file.cpp", "message"}));
    EXPECT_EQ(record->GetLevel(), 2u);
    EXPECT_EQ(record->GetLine(), 7u);
}

TEST(CLogData, GivesLevelsAndLinesBackAsPassed)
{
    const auto record = MakeRef<CLogData>(LogEntry{"", -1, "", "", "", 4294967295U, ""});
    EXPECT_EQ(record->GetLevel(), 4294967295U);
    EXPECT_EQ(record->GetLine(), 4294967295U);
}

TEST(CLogData, TellsAbsentTextsFromEmptyOnes)
{
    const auto absent = MakeRef<CLogData>(LogEntry{nullptr, 1, nullptr, nullptr, nullptr, 0, nullptr});
    EXPECT_EQ(TextsOf(*absent), (Texts{"(null)", "(null)", "(null)", "(null)", "(null)"}));
    const auto empty = MakeRef<CLogData>(LogEntry{"", 1, "", "", "", 0, ""});
    EXPECT_EQ(TextsOf(*empty), (Texts{"", "", "", "", ""}));
}

TEST(CLogData, KeepsEachTextApartFromItsNeighboursBeingAbsent)
{
    const auto record = MakeRef<CLogData>(LogEntry{nullptr, 1, "source", nullptr, "file", 0, nullptr});
    EXPECT_EQ(TextsOf(*record), (Texts{"(null)", "source", "(null)", "file", "(null)"}));
}

TEST(CLogData, KeepsCopiesOfItsTexts)
{
    std::string name = "Main";
    std::string message(10000, 'm');
    const auto record = MakeRef<CLogData>(LogEntry{name.c_str(), 1, "s", "c", "f", 0, message.c_str()});
    name = "Else";
    message.assign(message.size(), 'x');
    EXPECT_STREQ(record->GetLoggerName(), "Main");
    EXPECT_EQ(record->GetMessage(), std::string(10000, 'm'));
}

TEST(CLogData, CountsFromZeroAndTellsItsDestruction)
{
    const auto handler = MakeRef<RecordingHandler>();
    auto record = MakeRef<CLogData>(LogEntry{"Main", 1, "s", "c", "f", 0, "m"});
    EXPECT_TRUE(record->IsUnique());
    record->SubscribeDestroyed(handler.Get(), 5);
    record = nullptr;
    EXPECT_EQ(handler->GetNames(), std::vector<std::string>{"Destroyed"});
}

}  // namespace tvx::test
