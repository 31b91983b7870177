// SPDX-License-Identifier: MIT
#include "Tests/Support/LoggerFixture.h"

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

namespace tvx::test
{

namespace
{

// No file of this process grows beyond a size.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before_ = {};
    void (*handler_)(int);
};

// The number of this process's open file of a path, or -1.
int FindDescriptor(const std::filesystem::path& file)
{
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
    {
        std::error_code failed;
        if (std::filesystem::read_symlink(entry, failed) == std::filesystem::canonical(file, failed))
            return std::stoi(entry.path().filename());
    }
    return -1;
}

class LoggerFiles : public LoggerTest
{
protected:
    // Logs messages 1 to count, and gives the number of lines that have reached the file after each.
    std::vector<std::size_t> CountLines(const char* loggerName, int count)
    {
        std::vector<std::size_t> counts;
        for (int message = 1; message <= count; ++message)
        {
            Say(*logger, loggerName, "m");
            const auto text = folder.Read("log.txt");
            counts.push_back(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')));
        }
        return counts;
    }

    using Counts = std::vector<std::size_t>;
};

}  // namespace

TEST_F(LoggerFiles, AreFlushedAfterEveryLineAtAThresholdOfOne)
{
    ConfigureFile(1);
    EXPECT_EQ(CountLines("Main", 3), (Counts{1, 2, 3}));
}

TEST_F(LoggerFiles, AreFlushedAfterEveryLineAtAThresholdOfZero)
{
    ConfigureFile(0);
    EXPECT_EQ(CountLines("Main", 3), (Counts{1, 2, 3}));
}

TEST_F(LoggerFiles, AreFlushedAfterEveryLineAtANegativeThreshold)
{
    ConfigureFile(-5);
    EXPECT_EQ(CountLines("Main", 3), (Counts{1, 2, 3}));
}

TEST_F(LoggerFiles, AreFlushedAfterEveryThirdLineAtAThresholdOfThree)
{
    ConfigureFile(3);
    EXPECT_EQ(CountLines("Main", 7), (Counts{0, 0, 3, 3, 3, 6, 6}));
}

TEST_F(LoggerFiles, AreFlushedAfterEveryTwoHundredthLineByThemselves)
{
    Configure({{"Default\\ToStdOut", false}, {"Default\\ToFile", true}});
    const auto counts = CountLines("Main", 401);
    EXPECT_EQ(counts[198], 0u);
    EXPECT_EQ(counts[199], 200u);
    EXPECT_EQ(counts[398], 200u);
    EXPECT_EQ(counts[399], 400u);
    EXPECT_EQ(counts[400], 400u);
}

TEST_F(LoggerFiles, CountOnlyTheLinesThatAreWritten)
{
    ConfigureFile(2);
    logger->SetLevel("Main", LogLevel::Warn);
    EXPECT_EQ(CountLines("Main", 5), (Counts{0, 0, 0, 0, 0}));
    logger->SetLevel("Main", LogLevel::Info);
    EXPECT_EQ(CountLines("Main", 2), (Counts{0, 2}));
}

TEST_F(LoggerFiles, AreSharedByNamesThatCountForThemselves)
{
    ConfigureFile(3);
    config->values["Net\\LogFlushThreshold"] = 2;
    EXPECT_EQ(CountLines("Main", 2), (Counts{0, 0}));
    EXPECT_EQ(CountLines("Net", 1), (Counts{0}));
    EXPECT_EQ(CountLines("Net", 1), (Counts{4}));   // the second of its own flushes all
    EXPECT_EQ(CountLines("Main", 1), (Counts{5}));  // the third of its own
    logger = nullptr;
    EXPECT_EQ(WithoutTimes(folder.Read("log.txt")).size(), 5 * std::string(" INFO  [S] m\n").size());
}

TEST_F(LoggerFiles, TakeTheLinesOfAllTheirNamesInOrder)
{
    ConfigureFile(200);
    Say(*logger, "Main", "1");
    Say(*logger, "Net", "2");
    Say(*logger, "Main", "3");
    logger = nullptr;
    EXPECT_EQ(WithoutTimes(folder.Read("log.txt")), " INFO  [S] 1\n INFO  [S] 2\n INFO  [S] 3\n");
}

TEST_F(LoggerFiles, AreEmptiedWhenTheyAreOpened)
{
    folder.Write("log.txt", "what an earlier run has left\n");
    ConfigureFile();
    EXPECT_NE(folder.Read("log.txt"), "");  // nothing is opened before a name is used
    logger->SetLevel("Main", LogLevel::Info);
    EXPECT_EQ(folder.Read("log.txt"), "");
    Say(*logger, "Main", "m");
    EXPECT_EQ(WithoutTimes(folder.Read("log.txt")), " INFO  [S] m\n");
}

TEST_F(LoggerFiles, AreOpenedAgainUnderASecondSpelling)
{
    ConfigureFile();
    config->values["Net\\Filename"] = std::string("./log.txt");
    Say(*logger, "Main", "lost");
    Say(*logger, "Net", "n");
    EXPECT_EQ(WithoutTimes(folder.Read("log.txt")), " INFO  [S] n\n");
}

TEST_F(LoggerFiles, AreWrittenToByOthersMeanwhile)
{
    ConfigureFile();
    Say(*logger, "Main", "m");
    std::ofstream other("log.txt", std::ios::app);
    other << "other\n" << std::flush;
    EXPECT_TRUE(other.good());
    EXPECT_EQ(folder.Read("log.txt").substr(TimeStampLength), " INFO  [S] m\nother\n");
}

TEST_F(LoggerFiles, AreNotPassedOnToOtherPrograms)
{
    ConfigureFile();
    Say(*logger, "Main", "m");
    const int descriptor = FindDescriptor("log.txt");
    ASSERT_GE(descriptor, 0);
    std::ifstream info("/proc/self/fdinfo/" + std::to_string(descriptor));
    std::string line;
    while (line.rfind("flags:", 0) != 0 && std::getline(info, line))
    {
    }
    EXPECT_NE(std::stoul(line.substr(line.find_first_of("01")), nullptr, 8) & 02000000u, 0u);
}

TEST_F(LoggerFiles, AreWrittenWhenTheLoggerGoes)
{
    ConfigureFile(200);
    Say(*logger, "Main", "m");
    EXPECT_EQ(folder.Read("log.txt"), "");
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&)
    {
        EXPECT_EQ(WithoutTimes(folder.Read("log.txt")), " INFO  [S] m\n");
        EXPECT_EQ(FindDescriptor("log.txt"), -1);
    };
    logger->SubscribeDestroyed(handler.Get(), 0);
    logger = nullptr;
    EXPECT_EQ(handler->events.size(), 1u);
}

TEST_F(LoggerFiles, HoldTheSameLinesAsStandardOutput)
{
    ConfigureFile();
    config->values["Default\\ToStdOut"] = true;
    logger->SetConfiguration(config.Get());
    CaptureOutput([&] { GetLevel("Main"); });
    const auto output = CaptureOutput([&] { Say(*logger, "Main", "m"); });
    EXPECT_EQ(folder.Read("log.txt"), output);
    EXPECT_EQ(WithoutTimes(output), " INFO  [S] m\n");
}

TEST_F(LoggerFiles, KeepWhatWasWrittenBeforeTheNextFlush)
{
    ConfigureFile(200);
    const std::string message(1000, 'm');
    for (int count = 0; count < 199; ++count)  // more than is kept in memory
        Say(*logger, "Main", message.c_str());
    logger = nullptr;
    EXPECT_EQ(folder.Read("log.txt").size(), 199 * (TimeStampLength + std::string(" INFO  [S] \n").size() + 1000));
}

TEST_F(LoggerFiles, ThatCannotBeOpenedAreSkippedAndNeverTriedAgain)
{
    Configure({{"Default\\ToFile", true},
               {"Default\\ToStdOut", false},
               {"Default\\LogFlushThreshold", 1},
               {"Default\\Filename", std::string("missing/log.txt")}});
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    const auto output = CaptureOutput([&] { EXPECT_EQ(Say(*logger, "Main", "m"), TVX_OK); });
    EXPECT_EQ(output, AbsentImport("CrashDumpServer"));
    std::filesystem::create_directory("missing");
    EXPECT_EQ(Say(*logger, "Main", "m"), TVX_OK);
    CaptureOutput([&] { Say(*logger, "Net", "m"); });
    EXPECT_FALSE(folder.Has("missing/log.txt"));
    EXPECT_EQ(handler->events.size(), 3u);
}

TEST_F(LoggerFiles, ThatCannotBeOpenedLeaveStandardOutputToItself)
{
    Configure({{"Default\\ToFile", true}, {"Default\\Filename", std::string("missing/log.txt")}});
    CaptureOutput([&] { GetLevel("Main"); });
    EXPECT_EQ(Logged("Main", LogLevel::Info), " INFO  [S] m\n");
}

TEST_F(LoggerFiles, OfFoldersAndOfNoNameCannotBeOpened)
{
    for (const std::string name : {".", "", "/"})
    {
        logger = MakeRef<CBasicLogger>();
        Configure({{"Default\\ToFile", true}, {"Default\\ToStdOut", false}, {"Default\\Filename", name}});
        CaptureOutput([&] { EXPECT_EQ(Say(*logger, "Main", "m"), TVX_OK) << name; });
    }
}

TEST_F(LoggerFiles, OnAFullDiskNeitherFailNorLoseTheEvent)
{
    Configure({{"Default\\ToFile", true},
               {"Default\\ToStdOut", false},
               {"Default\\LogFlushThreshold", 1},
               {"Default\\Filename", std::string("/dev/full")}});
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    CaptureOutput([&] { GetLevel("Main"); });
    for (int count = 0; count < 3; ++count)
        EXPECT_EQ(Say(*logger, "Main", "m"), TVX_OK);
    EXPECT_EQ(handler->events.size(), 3u);
}

TEST_F(LoggerFiles, GoOnWhenThereIsRoomAgain)
{
    ConfigureFile();
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    CaptureOutput([&] { GetLevel("Main"); });
    {
        const FileSizeLimit limit(50);
        for (int count = 0; count < 100; ++count)
            EXPECT_EQ(Say(*logger, "Main", "m"), TVX_OK);
        EXPECT_EQ(folder.Read("log.txt").size(), 50u);
    }
    Say(*logger, "Main", "after");
    EXPECT_TRUE(folder.Read("log.txt").ends_with(" INFO  [S] after\n"));
    EXPECT_EQ(handler->events.size(), 101u);
}

TEST_F(LoggerFiles, ThatSomebodyClosedNeitherFailNorLoseTheEvent)
{
    ConfigureFile();
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    Say(*logger, "Main", "m");
    close(FindDescriptor("log.txt"));
    EXPECT_EQ(Say(*logger, "Main", "m"), TVX_OK);
    EXPECT_EQ(handler->events.size(), 2u);
}

TEST_F(LoggerFiles, ThatSomebodyRemovedGoOnUnseen)
{
    ConfigureFile();
    Say(*logger, "Main", "m");
    std::filesystem::remove("log.txt");
    EXPECT_EQ(Say(*logger, "Main", "m"), TVX_OK);
    EXPECT_FALSE(folder.Has("log.txt"));
}

}  // namespace tvx::test
