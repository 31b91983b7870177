// SPDX-License-Identifier: MIT
#include "Src/LogFile.h"
#include "Interfaces/ILogger.h"
#include "Tests/Support/LoggerTesting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace tvx::test
{

namespace
{

constexpr std::size_t BufferSize = std::size_t{64} * 1024;

class LogFileTest : public testing::Test
{
protected:
    // Gives the line.
    std::string WriteInPlace(const std::string& message)
    {
        const LogLine line("TIME", {"Main", LogLevel::Info, "S", "", "", 0, message.c_str()});
        std::string text(line.GetSize(), '#');
        line.CopyTo(text.data());
        if (!file->WriteInPlace(line))
            file->Write(text);
        return text;
    }

    // Gives it.
    const std::string& Write(const std::string& text)
    {
        file->Write(text);
        return text;
    }

    std::string Read() const { return folder.Read("file"); }

    CurrentFolder folder;
    std::unique_ptr<LogFile> file = std::make_unique<LogFile>("file");
};

}  // namespace

TEST_F(LogFileTest, KeepsLinesBackUntilItIsFlushed)
{
    ASSERT_TRUE(file->IsOpen());
    file->Write("first\n");
    const auto second = WriteInPlace("second");
    EXPECT_EQ(Read(), "");
    file->Flush();
    EXPECT_EQ(Read(), "first\n" + second);
    file->Flush();
    EXPECT_EQ(Read(), "first\n" + second);
}

TEST_F(LogFileTest, WritesWhatIsLeftWhenItGoes)
{
    file->Write("line\n");
    file = nullptr;
    EXPECT_EQ(Read(), "line\n");
}

TEST_F(LogFileTest, BuffersAsMuchAsThereIsRoomFor)
{
    const std::string full(BufferSize, 'f');
    file->Write(full);
    EXPECT_EQ(Read(), "");
    file->Write("x");
    EXPECT_EQ(Read(), full);
    file->Flush();
    EXPECT_EQ(Read(), full + "x");
}

TEST_F(LogFileTest, WritesALineThatIsLargerThanTheBufferBehindWhatWasThere)
{
    const std::string large(BufferSize + 1, 'l');
    file->Write("before\n");
    file->Write(large);
    file->Write("after\n");
    EXPECT_EQ(Read(), "before\n" + large);
    file = nullptr;
    EXPECT_EQ(Read(), "before\n" + large + "after\n");
}

TEST_F(LogFileTest, PutsNothingTogetherThatIsLargerThanTheBuffer)
{
    const std::string message(BufferSize, 'm');
    const LogLine line("TIME", {"Main", LogLevel::Info, "S", "", "", 0, message.c_str()});
    EXPECT_FALSE(file->WriteInPlace(line));
    file = nullptr;
    EXPECT_EQ(Read(), "");
}

TEST_F(LogFileTest, IsOneOfManyThatComeAndGo)
{
    std::vector<std::unique_ptr<LogFile>> files;
    for (int number = 0; number < 10; ++number)
        files.push_back(std::make_unique<LogFile>(std::to_string(number).c_str()));
    for (const auto& one : files)
        one->Write("line\n");
    std::mt19937 random(1);
    std::shuffle(files.begin(), files.end(), random);
    files.clear();
    for (int number = 0; number < 10; ++number)
        EXPECT_EQ(folder.Read(std::to_string(number)), "line\n");
}

TEST_F(LogFileTest, ThatCannotBeOpenedIsClosed)
{
    EXPECT_FALSE(LogFile("missing/file").IsOpen());
}

TEST_F(LogFileTest, HoldsWhateverIsWrittenInItsOrder)
{
    std::mt19937 random(5);
    std::string expected;
    for (int step = 0; step < 200; ++step)
    {
        const std::size_t sizes[] = {random() % 100, random() % 100, random() % 5000, BufferSize - 20 + random() % 40};
        const std::string text(sizes[random() % 4], static_cast<char>('a' + step % 26));
        expected += random() % 2 == 0 ? WriteInPlace(text) : Write(text);
        if (random() % 20 != 0)
            continue;
        file->Flush();
        ASSERT_EQ(Read().size(), expected.size()) << step;
    }
    file = nullptr;
    EXPECT_EQ(Read(), expected);
}

}  // namespace tvx::test
