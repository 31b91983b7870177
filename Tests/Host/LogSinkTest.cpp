// SPDX-License-Identifier: MIT
#include "Host/JsonLinesSink.h"
#include "Host/RotatingFileSink.h"
#include "Src/ConsoleLoggerPlug.h"
#include "Tests/Host/LogSinkFixture.h"
#include "Tests/Threads/RunTogether.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <set>
#include <stdexcept>

namespace tvx::host
{
namespace
{

namespace fs = std::filesystem;
using test::ReadLines;
using test::Tell;
using Texts = std::vector<std::string>;

// What holds for a sink of either kind; a sink is asked for the messages alone.
struct SinkKind
{
    const char* name;
    Outcome<Ref<LogSink>> (*open)(const fs::path& file);
    std::string (*getMessage)(const std::string& line);

    friend std::ostream& operator<<(std::ostream& out, const SinkKind& kind) { return out << kind.name; }
};

const SinkKind Kinds[] = {
    {"JsonLines", OpenJsonLinesSink,
     [](const std::string& line)
     {
         const auto json = nlohmann::json::parse(line, nullptr, false);
         return json.is_object() ? json["message"].get<std::string>() : "broken: " + line;
     }},
    {"Rotating",
     [](const fs::path& file) {
         return OpenRotatingFileSink(file, {1000000, 1});
     },
     [](const std::string& line)
     {
         const auto head = line.find("[Net] ");
         return head != std::string::npos ? line.substr(head + 6) : "broken: " + line;
     }},
};

class LogSinkTest : public testing::TestWithParam<SinkKind>
{
protected:
    void Open()
    {
        auto opened = GetParam().open(file);
        ASSERT_TRUE(opened) << opened.GetError().message;
        sink = *opened;
    }

    std::string OpenFailure(const fs::path& path) const
    {
        const auto opened = GetParam().open(path);
        if (opened)
            return "opened";
        EXPECT_EQ(opened.GetError().kind, ErrorKind::CannotRead);
        return opened.GetError().message;
    }

    Texts GetMessages() const
    {
        Texts messages;
        for (const auto& line : ReadLines(file))
            messages.push_back(GetParam().getMessage(line));
        return messages;
    }

    test::ScratchFolder folder;
    fs::path file = folder.GetPath() / "log.txt";
    Ref<LogSink> sink;
};

INSTANTIATE_TEST_SUITE_P(, LogSinkTest, testing::ValuesIn(Kinds), [](const auto& kind) { return kind.param.name; });

TEST_P(LogSinkTest, HasEachRecordInTheFileWhenTheEventIsOver)
{
    Open();
    EXPECT_TRUE(fs::exists(file));
    for (std::size_t count = 1; count <= 3; ++count)
    {
        EXPECT_EQ(Tell(*sink, "text"), TVX_OK);
        EXPECT_EQ(GetMessages(), Texts(count, "text"));
    }
    EXPECT_EQ(sink->GetLostCount(), 0U);
    EXPECT_EQ(sink->GetFirstProblem(), "");
}

TEST_P(LogSinkTest, AddsToWhatTheFileHolds)
{
    Open();
    Tell(*sink, "one");
    Open();
    Tell(*sink, "two");
    EXPECT_EQ(GetMessages(), (Texts{"one", "two"}));
}

TEST_P(LogSinkTest, EndsALineThatWasCutOffBeforeItAddsTheNext)
{
    folder.Write("log.txt", "cut");
    Open();
    Tell(*sink, "one");
    EXPECT_EQ(GetMessages(), (Texts{"broken: cut", "one"}));
}

TEST_P(LogSinkTest, HearsTheModulesLogger)
{
    Open();
    const auto logger = MakeRef<CBasicLogger>();
    logger->SetLevel("Main", LogLevel::Fatal + 1);
    logger->AdviseMessageLogged(sink.Get(), 0, true);
    logger->Log("Main", LogLevel::Info, "Net", nullptr, nullptr, 0, "one\ntwo");
    logger->AdviseMessageLogged(sink.Get(), 0, false);
    logger->Log("Main", LogLevel::Info, "Net", nullptr, nullptr, 0, "three");
    EXPECT_EQ(ReadLines(file).size(), 1U);
    EXPECT_TRUE(GetMessages().at(0).starts_with("one"));
    EXPECT_TRUE(GetMessages().at(0).ends_with("two"));
}

TEST_P(LogSinkTest, RefusesOtherEventsAndEventsWithoutARecord)
{
    Open();
    const auto record = MakeRef<CLogData>(LogEntry{});
    const auto param = reinterpret_cast<std::uintptr_t>(static_cast<ILogData*>(record.Get()));
    EXPECT_EQ(sink->OnEvent(nullptr, ILogger::Id, "Changed", param, 0), TVX_E_PRECONDITION);
    EXPECT_EQ(sink->OnEvent(nullptr, IObject::Id, "MessageLogged", param, 0), TVX_E_PRECONDITION);
    EXPECT_EQ(sink->OnEvent(nullptr, ILogger::Id, "MessageLogged", 0, 0), TVX_E_PRECONDITION);
    EXPECT_EQ(sink->GetLostCount(), 0U);
    EXPECT_EQ(GetMessages(), Texts());
}

TEST_P(LogSinkTest, AnswersItsThreeInterfaces)
{
    Open();
    EXPECT_EQ(Query<IEventHandler>(sink).Get(), sink.Get());
    EXPECT_EQ(Query<IObject>(sink).Get(), sink.Get());
    EXPECT_EQ(Query<IObjectBase>(sink).Get(), sink.Get());
    EXPECT_FALSE(Query<ILogger>(sink));
}

TEST_P(LogSinkTest, CannotBeOpenedInAFolderThatIsNotThere)
{
    const auto path = folder.GetPath() / "none" / "log.txt";
    EXPECT_EQ(OpenFailure(path), path.string() + " cannot be written: No such file or directory");
    EXPECT_FALSE(fs::exists(path.parent_path()));
}

TEST_P(LogSinkTest, CannotBeOpenedOnAFolder)
{
    EXPECT_EQ(OpenFailure(folder.GetPath()), folder.GetPath().string() + " cannot be written: Is a directory");
}

TEST_P(LogSinkTest, CannotBeOpenedWithoutAName)
{
    EXPECT_NE(OpenFailure("").find("cannot be written: "), std::string::npos);
}

TEST_P(LogSinkTest, CountsWhatAFullDiskDoesNotTake)
{
    file = "/dev/full";
    Open();
    EXPECT_LT(Tell(*sink, "one"), 0);
    EXPECT_LT(Tell(*sink, "two"), 0);
    EXPECT_EQ(sink->GetLostCount(), 2U);
    const auto problem = sink->GetFirstProblem();
    EXPECT_TRUE(problem.starts_with("/dev/full cannot be written: ")) << problem;
    EXPECT_TRUE(problem.ends_with("No space left on device")) << problem;
}

TEST_P(LogSinkTest, LosesNothingElseWhenTheDiskIsFullForAWhile)
{
    Open();
    EXPECT_EQ(Tell(*sink, "one"), TVX_OK);
    {
        const test::FullDisk full(fs::file_size(file) + 10);
        EXPECT_LT(Tell(*sink, "lost"), 0);
        EXPECT_LT(Tell(*sink, "lost, too"), 0);
    }
    EXPECT_EQ(Tell(*sink, "two"), TVX_OK);
    EXPECT_EQ(sink->GetLostCount(), 2U);
    const auto messages = GetMessages();
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_EQ(messages[0], "one");
    EXPECT_TRUE(messages[1].starts_with("broken: ")) << messages[1];
    EXPECT_EQ(messages[2], "two");
}

TEST_P(LogSinkTest, MakesAFileAgainThatWasRemoved)
{
    Open();
    Tell(*sink, "one");
    fs::remove(file);
    EXPECT_EQ(Tell(*sink, "two"), TVX_OK);
    EXPECT_EQ(GetMessages(), Texts{"two"});
    EXPECT_EQ(sink->GetLostCount(), 0U);
}

TEST_P(LogSinkTest, CountsWhatAMissingFolderDoesNotTakeAndGoesOnWhenItIsBack)
{
    const auto logs = folder.GetPath() / "logs";
    file = logs / "log.txt";
    fs::create_directory(logs);
    Open();
    fs::remove_all(logs);
    EXPECT_LT(Tell(*sink, "lost"), 0);
    EXPECT_LT(Tell(*sink, "lost"), 0);
    EXPECT_FALSE(fs::exists(logs));
    fs::create_directory(logs);
    EXPECT_EQ(Tell(*sink, "one"), TVX_OK);
    EXPECT_EQ(GetMessages(), Texts{"one"});
    EXPECT_EQ(sink->GetLostCount(), 2U);
    EXPECT_EQ(sink->GetFirstProblem(), file.string() + " cannot be written: No such file or directory");
}

TEST_P(LogSinkTest, KeepsTheFirstProblemOfSeveral)
{
    const auto logs = folder.GetPath() / "logs";
    file = logs / "log.txt";
    fs::create_directory(logs);
    Open();
    fs::remove_all(logs);
    EXPECT_LT(Tell(*sink, "lost"), 0);
    fs::create_directories(file);  // a folder now
    EXPECT_LT(Tell(*sink, "lost"), 0);
    EXPECT_EQ(sink->GetLostCount(), 2U);
    EXPECT_EQ(sink->GetFirstProblem(), file.string() + " cannot be written: No such file or directory");
}

TEST_P(LogSinkTest, TakesRecordsOfManyThreadsOneLineEach)
{
    Open();
    const auto tell = [&](int thread)
    {
        for (int i = 0; i < 50; ++i)
            EXPECT_EQ(Tell(*sink, std::string(1000, static_cast<char>('a' + thread)).c_str()), TVX_OK);
    };
    test::RunTogether(tell);
    const auto messages = GetMessages();
    EXPECT_EQ(messages.size(), 400U);
    for (const auto& message : messages)
        EXPECT_EQ(message, std::string(1000, message[0]));
}

TEST(LogSink, StaysAtItsFileWhenTheProgramChangesItsFolder)
{
    const test::ScratchFolder folder;
    const auto before = fs::current_path();
    fs::current_path(folder.GetPath());
    const auto sink = *OpenJsonLinesSink("log.txt");
    fs::current_path(before);
    EXPECT_EQ(Tell(*sink, "one"), TVX_OK);
    EXPECT_EQ(ReadLines(folder.GetPath() / "log.txt").size(), 1U);
}

TEST(LogSink, LetsNoExceptionOut)
{
    class Unwilling final : public ILineOutput
    {
    public:
        void WriteLine(const std::string& line) override
        {
            if (line == "odd")
                throw 1;
            throw std::runtime_error("does not\nwant to");
        }
    };
    static std::string text;
    const auto open = [](const fs::path&) { return std::make_unique<Unwilling>(); };
    const auto format = [](const LoggedMessage&) { return text; };
    const auto sink = *OpenLogSink("/dev/null", format, open);
    text = "odd";
    EXPECT_LT(Tell(*sink, ""), 0);
    text = "plain";
    EXPECT_LT(Tell(*sink, ""), 0);
    EXPECT_EQ(sink->GetLostCount(), 2U);
    EXPECT_EQ(sink->GetFirstProblem(), "/dev/null cannot be written: for an unknown reason");
}

TEST(JsonLinesSink, WritesTheThreadThatLogs)
{
    const test::ScratchFolder folder;
    const auto file = folder.GetPath() / "log.txt";
    const auto sink = *OpenJsonLinesSink(file);
    test::RunTogether([&](int) { Tell(*sink, "text"); });
    std::set<std::uint32_t> threads;
    for (const auto& line : ReadLines(file))
        threads.insert(nlohmann::json::parse(line)["thread"].get<std::uint32_t>());
    EXPECT_EQ(threads.size(), 8U);
}

TEST(JsonLinesSink, WritesTheTimeOfTheEvent)
{
    const test::ScratchFolder folder;
    const auto file = folder.GetPath() / "log.txt";
    const auto sink = *OpenJsonLinesSink(file);
    const auto record = MakeRef<CLogData>(LogEntry{});
    const auto getTime = [&](std::chrono::system_clock::time_point time) {
        return nlohmann::json::parse(FormatJsonLine({*record, time, 0}))["time"].get<std::string>();
    };
    const auto before = getTime(std::chrono::system_clock::now());
    Tell(*sink, "text");
    const auto after = getTime(std::chrono::system_clock::now());
    const auto time = nlohmann::json::parse(ReadLines(file).at(0))["time"].get<std::string>();
    EXPECT_LE(before, time);
    EXPECT_LE(time, after);
}

TEST(RotatingFileSink, BeginsAnewBeforeTheFileOutgrowsItsLimit)
{
    const test::ScratchFolder folder;
    const auto file = folder.GetPath() / "log.txt";
    const auto sink = *OpenRotatingFileSink(file, {100, 2});
    for (const char* const message : {"1", "2", "3", "4", "5", "6", "7", "8"})
        EXPECT_EQ(Tell(*sink, message), TVX_OK);
    const auto numbers = [&](const char* name)
    {
        std::string found;
        for (const auto& line : ReadLines(folder.GetPath() / name))
            found += line.back();
        return found;
    };
    // A line has 46 bytes with its end.
    EXPECT_EQ(numbers("log.txt"), "78");
    EXPECT_EQ(numbers("log.1.txt"), "56");
    EXPECT_EQ(numbers("log.2.txt"), "34");
    EXPECT_FALSE(fs::exists(folder.GetPath() / "log.3.txt"));
    EXPECT_EQ(fs::file_size(file), 92U);
}

TEST(RotatingFileSink, FillsAFileUpToItsLimitExactly)
{
    const test::ScratchFolder folder;
    const auto sink = *OpenRotatingFileSink(folder.GetPath() / "log", {92, 1});
    for (const char* const message : {"1", "2", "3"})
        EXPECT_EQ(Tell(*sink, message), TVX_OK);
    EXPECT_EQ(ReadLines(folder.GetPath() / "log").size(), 1U);
    EXPECT_EQ(ReadLines(folder.GetPath() / "log.1").size(), 2U);
}

TEST(RotatingFileSink, CountsWhatTheFileHeldBefore)
{
    const test::ScratchFolder folder;
    const auto file = folder.Write("log.txt", std::string(60, 'x') + "\n");
    const auto sink = *OpenRotatingFileSink(file, {100, 1});
    EXPECT_EQ(Tell(*sink, "1"), TVX_OK);
    EXPECT_EQ(ReadLines(file).size(), 1U);
    EXPECT_EQ(fs::file_size(folder.GetPath() / "log.1.txt"), 61U);
}

TEST(RotatingFileSink, KeepsNoOldFileWhenNoneIsAskedFor)
{
    const test::ScratchFolder folder;
    const auto file = folder.GetPath() / "log.txt";
    const auto sink = *OpenRotatingFileSink(file, {50, 0});
    for (const char* const message : {"1", "2", "3"})
        EXPECT_EQ(Tell(*sink, message), TVX_OK);
    ASSERT_EQ(ReadLines(file).size(), 1U);
    EXPECT_TRUE(ReadLines(file)[0].ends_with("3"));
    EXPECT_FALSE(fs::exists(folder.GetPath() / "log.1.txt"));
}

TEST(RotatingFileSink, PutsALineThatIsLongerThanAFileIntoOneOfItsOwn)
{
    const test::ScratchFolder folder;
    const auto file = folder.GetPath() / "log.txt";
    const auto sink = *OpenRotatingFileSink(file, {100, 5});
    const std::string longest(100000, 'x');
    for (const char* const message : {"1", longest.c_str(), "2"})
        EXPECT_EQ(Tell(*sink, message), TVX_OK);
    EXPECT_EQ(fs::file_size(folder.GetPath() / "log.1.txt"), 100045U);
    EXPECT_EQ(fs::file_size(file), 46U);
}

TEST(RotatingFileSink, GoesOnWhenAnOldFileCannotBeMovedAway)
{
    const test::ScratchFolder folder;
    const auto file = folder.GetPath() / "log.txt";
    fs::create_directories(folder.GetPath() / "log.1.txt" / "in the way");
    const auto sink = *OpenRotatingFileSink(file, {50, 1});
    EXPECT_EQ(Tell(*sink, "1"), TVX_OK);
    EXPECT_LT(Tell(*sink, "2"), 0);
    EXPECT_EQ(Tell(*sink, "3"), TVX_OK);
    EXPECT_EQ(sink->GetLostCount(), 1U);
    EXPECT_TRUE(sink->GetFirstProblem().starts_with(file.string() + " cannot be written: ")) << sink->GetFirstProblem();
    ASSERT_EQ(ReadLines(file).size(), 1U);
    EXPECT_TRUE(ReadLines(file)[0].ends_with("3"));
}

TEST(RotatingFileSink, RefusesLimitsThatAreNone)
{
    const test::ScratchFolder folder;
    const auto file = folder.GetPath() / "log.txt";
    for (const auto& limits : {RotationLimits{0, 1}, RotationLimits{1, RotationLimits::MostFiles + 1}})
    {
        const auto sink = OpenRotatingFileSink(file, limits);
        ASSERT_FALSE(sink);
        EXPECT_EQ(sink.GetError().kind, ErrorKind::CannotRead);
        EXPECT_TRUE(sink.GetError().message.starts_with(file.string() + " cannot be written within "));
    }
    EXPECT_FALSE(fs::exists(file));
}

TEST(RotatingFileSink, LeavesFormattingMarksInMessagesAlone)
{
    const test::ScratchFolder folder;
    const auto file = folder.GetPath() / "log.txt";
    const auto sink = *OpenRotatingFileSink(file, {10000, 0});
    EXPECT_EQ(Tell(*sink, "{} {0} %v %s"), TVX_OK);
    EXPECT_TRUE(ReadLines(file).at(0).ends_with(" {} {0} %v %s"));
}

}  // namespace
}  // namespace tvx::host
