// SPDX-License-Identifier: MIT
#include "Platform/ThreadId.h"
#include "Tests/Support/LoggerFixture.h"

#include <iostream>
#include <sstream>

namespace tvx::test
{

namespace
{

// Records the messages that its event would have told.
class DerivedLogger final : public CBasicLogger
{
public:
    explicit DerivedLogger(bool* died) : died_(died) {}
    ~DerivedLogger() override { *died_ = true; }

    void FireMessageLogged(ILogData* record) override { messages.emplace_back(record->GetMessage()); }

    std::vector<std::string> messages;

private:
    bool* died_;
};

class ThrowingLogger final : public CBasicLogger
{
public:
    void FireMessageLogged(ILogData*) override { throw std::bad_alloc(); }
};

ILogData* RecordOf(const SeenEvent& event)
{
    return reinterpret_cast<ILogData*>(event.param);
}

// What standard output gets is refused, with an exception.
class RefusingOutput
{
public:
    RefusingOutput() : buffer_(std::cout.rdbuf(&refusing_)), mask_(std::cout.exceptions())
    {
        std::cout.exceptions(std::ios::badbit | std::ios::failbit);
    }

    ~RefusingOutput()
    {
        std::cout.exceptions(std::ios::goodbit);
        std::cout.clear();
        std::cout.rdbuf(buffer_);
        std::cout.exceptions(mask_);
    }

private:
    struct Refusing : std::streambuf
    {
    };

    Refusing refusing_;
    std::streambuf* buffer_;
    std::ios::iostate mask_;
};

}  // namespace

TEST_F(LoggerTest, WritesInformationAndWorseToStandardOutputWithoutConfiguration)
{
    EXPECT_EQ(Logged("Main", LogLevel::Trace), "");
    EXPECT_EQ(Logged("Main", LogLevel::Debug), "");
    EXPECT_EQ(Logged("Main", LogLevel::Info), " INFO  [S] m\n");
    EXPECT_EQ(Logged("Main", LogLevel::Warn), " WARN  [S] m\n");
    EXPECT_EQ(Logged("Main", LogLevel::Error), " ERROR [S] m\n");
    EXPECT_EQ(Logged("Main", LogLevel::Fatal), " FATAL [S] m\n");
    EXPECT_FALSE(folder.Has("log.txt"));
}

TEST_F(LoggerTest, WritesTheTimeInFront)
{
    const auto now = [] { return TimeStamp(); };
    auto stamp = now();
    const auto before = std::string(stamp.Get(std::time(nullptr)));
    const auto line = CaptureOutput([&] { Say(*logger, "Main", "ready"); });
    const auto after = std::string(stamp.Get(std::time(nullptr)));
    EXPECT_TRUE(line == before + " INFO  [S] ready\n" || line == after + " INFO  [S] ready\n") << line;
}

TEST_F(LoggerTest, WritesTracesInTheDetailedForm)
{
    logger->SetLevel("Main", LogLevel::Trace);
    EXPECT_EQ(Logged("Main", LogLevel::Trace),
              " TRACE [S] [C] [F:1] [ThreadID=" + std::to_string(Platform::GetCurrentThreadId()) + "] m\n");
}

TEST_F(LoggerTest, PrintsSevenBlanksBeforeTheSourceOfAnUnknownLevel)
{
    EXPECT_EQ(Logged("Main", 7), "       [S] m\n");
}

TEST_F(LoggerTest, NeverPrintsTheLoggerName)
{
    EXPECT_EQ(Logged("UnmistakableName", LogLevel::Info), " INFO  [S] m\n");
}

TEST_F(LoggerTest, ComparesLevelsAsSignedNumbers)
{
    logger->SetLevel("Main", -5);
    EXPECT_EQ(Logged("Main", -6), "");
    EXPECT_EQ(Logged("Main", -5), "       [S] m\n");
    EXPECT_EQ(Logged("Main", 0), "       [S] m\n");
    logger->SetLevel("Main", INT32_MAX);
    EXPECT_EQ(Logged("Main", LogLevel::Fatal), "");
    EXPECT_EQ(Logged("Main", INT32_MAX), "       [S] m\n");
}

TEST_F(LoggerTest, FiltersEachNameByItsOwnLevel)
{
    logger->SetLevel("Quiet", LogLevel::Fatal);
    EXPECT_EQ(Logged("Quiet", LogLevel::Error), "");
    EXPECT_EQ(Logged("Loud", LogLevel::Error), " ERROR [S] m\n");
    EXPECT_EQ(Logged("quiet", LogLevel::Error), " ERROR [S] m\n");
}

TEST_F(LoggerTest, GivesTheLevelThatWasSet)
{
    EXPECT_EQ(GetLevel("Main"), LogLevel::Info);
    EXPECT_EQ(logger->SetLevel("Main", -70000), TVX_OK);
    EXPECT_EQ(GetLevel("Main"), -70000);
    EXPECT_EQ(GetLevel("Other"), LogLevel::Info);
}

TEST_F(LoggerTest, ReportsANullPlaceForTheLevel)
{
    const auto output = CaptureOutput([&] { EXPECT_EQ(logger->GetLevel("Main", nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Src/ConsoleLoggerPlug.cpp"));
}

TEST_F(LoggerTest, TakesANullNameForTheEmptyOne)
{
    logger->SetLevel(nullptr, LogLevel::Fatal);
    EXPECT_EQ(GetLevel(""), LogLevel::Fatal);
    EXPECT_EQ(Logged(nullptr, LogLevel::Error), "");
}

TEST_F(LoggerTest, GivesZeroWhateverItIsTold)
{
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(logger->Log(nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr), TVX_OK); }),
              "");
    EXPECT_EQ(WithoutTimes(CaptureOutput(
                  [&] { EXPECT_EQ(logger->Log(nullptr, 3, nullptr, nullptr, nullptr, 0, nullptr), TVX_OK); })),
              " INFO  [] \n");
}

TEST_F(LoggerTest, FiresOneEventForEveryMessageWhateverIsWritten)
{
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), 77, true);
    Configure({{"Off\\ToStdOut", false}, {"Off\\ToFile", false}});
    EXPECT_EQ(Logged("Main", LogLevel::Info), " INFO  [S] m\n");
    EXPECT_EQ(Logged("Main", LogLevel::Debug), "");
    EXPECT_EQ(Logged("Off", LogLevel::Fatal), "");
    ASSERT_EQ(handler->events.size(), 3u);
    for (const auto& event : handler->events)
    {
        EXPECT_EQ(event.sender, static_cast<IObject*>(static_cast<ILogger*>(logger.Get())));
        EXPECT_EQ(event.interfaceId, "com.talvere.general.tvx.ILogger/1.0");
        EXPECT_EQ(event.eventName, "MessageLogged");
        EXPECT_EQ(event.userData, 77u);
    }
}

TEST_F(LoggerTest, FiresNothingForLevels)
{
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    logger->SetLevel("Main", 1);
    GetLevel("Main");
    EXPECT_TRUE(handler->events.empty());
}

TEST_F(LoggerTest, GivesHandlersTheRecordWithOneReferenceOfItsOwn)
{
    const auto handler = MakeRef<RecordingHandler>();
    Ref<ILogData> kept;
    handler->action = [&](const SeenEvent& event)
    {
        EXPECT_TRUE(RecordOf(event)->IsUnique());
        kept = Ref<ILogData>(RecordOf(event));
    };
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    logger->Log("Main", 2, "Net", nullptr, "a/b.cpp", 9, "hidden");
    ASSERT_TRUE(kept);
    EXPECT_TRUE(kept->IsUnique());
    EXPECT_STREQ(kept->GetLoggerName(), "Main");
    EXPECT_EQ(kept->GetLevel(), 2u);
    EXPECT_STREQ(kept->GetSource(), "Net");
    EXPECT_EQ(kept->GetScope(), nullptr);
    EXPECT_STREQ(kept->GetFile(), "a/b.cpp");
    EXPECT_EQ(kept->GetLine(), 9u);
    EXPECT_STREQ(kept->GetMessage(), "hidden");
}

TEST_F(LoggerTest, FiresTheEventWhenTheLineIsWritten)
{
    ConfigureFile();
    const auto handler = MakeRef<RecordingHandler>();
    std::string seen;
    handler->action = [&](const SeenEvent&) { seen = WithoutTimes(folder.Read("log.txt")); };
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    Say(*logger, "Main", "first");
    EXPECT_EQ(seen, " INFO  [S] first\n");
}

TEST_F(LoggerTest, TellsUnsubscribedHandlersNothing)
{
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    logger->AdviseMessageLogged(handler.Get(), 0, false);
    logger->Log("Main", 0, "", "", "", 0, "");
    EXPECT_EQ(handler->events.size(), 1u);
    logger->AdviseMessageLogged(handler.Get(), 0, false);
    logger->AdviseMessageLogged(nullptr, 0, true);
    logger->Log("Main", 0, "", "", "", 0, "");
    EXPECT_EQ(handler->events.size(), 1u);
}

TEST_F(LoggerTest, UnsubscribesEverybodyForANullHandler)
{
    const auto first = MakeRef<RecordingHandler>();
    const auto second = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(first.Get(), 0, true);
    logger->AdviseMessageLogged(second.Get(), 0, true);
    logger->AdviseMessageLogged(nullptr, 0, false);
    logger->Log("Main", 0, "", "", "", 0, "");
    EXPECT_TRUE(first->events.empty() && second->events.empty());
}

TEST_F(LoggerTest, LetsAHandlerLogInItsTurn)
{
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&)
    {
        if (handler->events.size() == 1)
            Say(*logger, "Main", "inner");
    };
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    EXPECT_EQ(Logged("Main", LogLevel::Info, "outer"), " INFO  [S] outer\n INFO  [S] inner\n");
    EXPECT_EQ(handler->events.size(), 2u);
}

TEST_F(LoggerTest, FiresARecordThatItIsGiven)
{
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    logger->FireMessageLogged(nullptr);
    ASSERT_EQ(handler->events.size(), 1u);
    EXPECT_EQ(handler->events[0].param, 0u);
}

TEST_F(LoggerTest, ShowsEveryMessageToALoggerThatFiresItself)
{
    bool died = false;
    auto derived = MakeRef<DerivedLogger>(&died);
    const auto handler = MakeRef<RecordingHandler>();
    derived->AdviseMessageLogged(handler.Get(), 0, true);
    CaptureOutput(
        [&]
        {
            Say(*derived, "Main", "written");
            derived->Log("Main", LogLevel::Trace, "", "", "", 0, "filtered");
        });
    EXPECT_EQ(derived->messages, (std::vector<std::string>{"written", "filtered"}));
    EXPECT_TRUE(handler->events.empty());
    derived = nullptr;
    EXPECT_TRUE(died);
}

TEST_F(LoggerTest, LetsNoExceptionOut)
{
    const auto throwing = MakeRef<ThrowingLogger>();
    EXPECT_EQ(throwing->Log("Main", 0, "", "", "", 0, ""), TVX_OK);
}

TEST_F(LoggerTest, GoesOnWhenStandardOutputThrows)
{
    ConfigureFile();
    config->values["Default\\ToStdOut"] = true;
    logger->SetConfiguration(config.Get());
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    {
        const RefusingOutput refusing;
        EXPECT_EQ(Say(*logger, "Main", "m"), TVX_OK);
    }
    EXPECT_EQ(handler->events.size(), 1u);
    EXPECT_EQ(WithoutTimes(folder.Read("log.txt")), " INFO  [S] m\n");
}

TEST_F(LoggerTest, DoesNotFlushStandardOutput)
{
    struct Counting : std::stringbuf
    {
        int sync() override { return ++flushes, 0; }
        int flushes = 0;
    };
    Counting counting;
    auto* const before = std::cout.rdbuf(&counting);
    Say(*logger, "Main", "m");
    std::cout.rdbuf(before);
    EXPECT_EQ(WithoutTimes(counting.str()), " INFO  [S] m\n");
    EXPECT_EQ(counting.flushes, 0);
}

TEST_F(LoggerTest, KeepsLongTextsWhole)
{
    const std::string message(100000, 'x');
    EXPECT_EQ(Logged("Main", LogLevel::Info, message.c_str()), " INFO  [S] " + message + "\n");
    EXPECT_EQ(Logged("Main", LogLevel::Info, "short"), " INFO  [S] short\n");
}

// The configuration belongs to a base and goes after the event.
TEST_F(LoggerTest, ReleasesWhatItHoldsWhenItDies)
{
    const auto handler = MakeRef<RecordingHandler>();
    logger->SetConfiguration(config.Get());
    EXPECT_EQ(config->GetRefCount(), 2u);
    handler->action = [&](const SeenEvent&) { EXPECT_EQ(config->GetRefCount(), 2u); };
    logger->SubscribeDestroyed(handler.Get(), 0);
    logger = nullptr;
    EXPECT_EQ(config->GetRefCount(), 1u);
    EXPECT_EQ(handler->GetNames(), std::vector<std::string>{"Destroyed"});
}

}  // namespace tvx::test
