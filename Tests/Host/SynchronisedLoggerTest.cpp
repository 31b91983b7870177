// SPDX-License-Identifier: MIT
#include "Host/SynchronisedLogger.h"

#include "Host/Configuration.h"
#include "Host/CrashDumpServer.h"
#include "Src/CLogData.h"
#include "Src/ConsoleLoggerPlug.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/LoggerTesting.h"
#include "Tests/Threads/RunTogether.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace tvx::host
{
namespace
{

using Texts = std::vector<std::string>;

Ref<ILogData> MakeRecord(const char* message)
{
    return MakeRef<CLogData>(LogEntry{"Main", LogLevel::Info, "S", nullptr, nullptr, 0, message});
}

std::string GetMessageOf(std::uint64_t param)
{
    return reinterpret_cast<ILogData*>(static_cast<std::uintptr_t>(param))->GetMessage();
}

// Records the calls and fires for every line; it answers what the test says.
class InnerLogger final : public ClassImpl<InnerLogger, ILogger>
{
public:
    using Interfaces = InterfaceList<ILogger, IObject, IObjectBase>;

    Result Log(const char* loggerName, std::int32_t level, const char* source, const char* scope, const char* file,
               std::uint32_t line, const char* message) override
    {
        const auto record = MakeRef<CLogData>(LogEntry{loggerName, level, source, scope, file, line, message});
        calls.push_back("Log " + Show(loggerName) + std::to_string(level) + " " + Show(source) + Show(scope) +
                        Show(file) + std::to_string(line) + " " + Show(message));
        FireMessageLogged(record.Get());
        return result;
    }
    Result SetLevel(const char* loggerName, std::int32_t level) override
    {
        calls.push_back("SetLevel " + Show(loggerName) + std::to_string(level));
        return result;
    }
    Result GetLevel(const char* loggerName, std::int32_t* out) override
    {
        calls.push_back("GetLevel " + Show(loggerName));
        if (out != nullptr)
            *out = 5;
        return result;
    }
    void AdviseMessageLogged(IEventHandler* handler, std::uint64_t cookie, bool add) override
    {
        subscriptions += add ? 1 : -1;
        Connect(ILogger::Id, "MessageLogged", handler, cookie, add);
    }
    void FireMessageLogged(ILogData* record) override
    {
        records.push_back(record);
        Fire(ILogger::Id, "MessageLogged", static_cast<ILogger*>(this), ToParameter(record));
    }

    Result result = TVX_OK;
    int subscriptions = 0;
    Texts calls;
    std::vector<const ILogData*> records;

private:
    static std::string Show(const char* text) { return std::string(text != nullptr ? text : "(null)") + " "; }
};

// A logger around a recording one, and a handler that hears it.
class SynchronisedLoggerTest : public testing::Test
{
protected:
    ~SynchronisedLoggerTest() override
    {
        if (logger)
            logger->AdviseMessageLogged(nullptr, 0, false);
    }

    void Listen(std::uint64_t cookie = 0) { logger->AdviseMessageLogged(handler.Get(), cookie, true); }

    Ref<InnerLogger> inner = MakeRef<InnerLogger>();
    Ref<SynchronisedLogger> logger = MakeRef<SynchronisedLogger>(inner);
    Ref<test::RecordingHandler> handler = MakeRef<test::RecordingHandler>();
};

TEST_F(SynchronisedLoggerTest, PassesEveryArgumentOn)
{
    std::int32_t level = 0;
    logger->Log("Net", -7, "source", "scope", "a/b.cpp", 4000000000U, "text");
    logger->Log(nullptr, 9, nullptr, nullptr, nullptr, 0, nullptr);
    logger->SetLevel("Net", 2);
    logger->SetLevel(nullptr, -1);
    logger->GetLevel("Net", &level);
    logger->GetLevel(nullptr, nullptr);
    EXPECT_EQ(level, 5);
    EXPECT_EQ(inner->calls,
              (Texts{"Log Net -7 source scope a/b.cpp 4000000000 text ", "Log (null) 9 (null) (null) (null) 0 (null) ",
                     "SetLevel Net 2", "SetLevel (null) -1", "GetLevel Net ", "GetLevel (null) "}));
}

TEST_F(SynchronisedLoggerTest, PassesEveryResultBack)
{
    for (const Result result : {TVX_OK, TVX_E_FAIL, TVX_E_POINTER, TVX_S_VALUE})
    {
        std::int32_t level = 0;
        inner->result = result;
        EXPECT_EQ(test::Say(*logger, "Net", "text"), result);
        EXPECT_EQ(logger->SetLevel("Net", 2), result);
        EXPECT_EQ(logger->GetLevel("Net", &level), result);
    }
}

TEST_F(SynchronisedLoggerTest, FiresEachMessageWithItselfAsSenderAndTheSameRecord)
{
    Listen(42);
    test::Say(*logger, "Net", "one");
    ASSERT_EQ(handler->events.size(), 1U);
    const auto& event = handler->events[0];
    EXPECT_EQ(event.sender, static_cast<IObject*>(logger.Get()));
    EXPECT_EQ(event.interfaceId, ILogger::Id);
    EXPECT_EQ(event.eventName, "MessageLogged");
    EXPECT_EQ(event.param, reinterpret_cast<std::uintptr_t>(inner->records.at(0)));
    EXPECT_EQ(event.userData, 42U);
}

TEST_F(SynchronisedLoggerTest, FiresThroughTheInnerLogger)
{
    Listen();
    inner->AdviseMessageLogged(handler.Get(), 7, true);
    const auto record = MakeRecord("one");
    logger->FireMessageLogged(record.Get());
    EXPECT_EQ(inner->records, (std::vector<const ILogData*>{record.Get()}));
    ASSERT_EQ(handler->events.size(), 2U);
    EXPECT_EQ(handler->events[0].sender, static_cast<IObject*>(logger.Get()));
    EXPECT_EQ(handler->events[1].sender, static_cast<IObject*>(inner.Get()));
    inner->AdviseMessageLogged(handler.Get(), 7, false);
}

TEST_F(SynchronisedLoggerTest, PassesOnWhatOthersCauseAtTheInnerLogger)
{
    Listen();
    test::Say(*inner, "Net", "aside");
    const auto record = MakeRecord("fired");
    inner->FireMessageLogged(record.Get());
    ASSERT_EQ(handler->events.size(), 2U);
    EXPECT_EQ(handler->events[0].sender, static_cast<IObject*>(logger.Get()));
    EXPECT_EQ(GetMessageOf(handler->events[1].param), "fired");
}

TEST_F(SynchronisedLoggerTest, CallsAHandlerOnceForEachOfItsSubscriptionsInTheirOrder)
{
    Listen(1);
    Listen(2);
    test::Say(*logger, "Net", "one");
    logger->AdviseMessageLogged(handler.Get(), 0, false);
    test::Say(*logger, "Net", "two");
    ASSERT_EQ(handler->events.size(), 3U);
    EXPECT_EQ(handler->events[0].userData, 1U);
    EXPECT_EQ(handler->events[1].userData, 2U);
    EXPECT_EQ(handler->events[2].userData, 2U);
}

TEST_F(SynchronisedLoggerTest, KeepsHearingTheInnerLoggerWhenEverybodyIsUnsubscribedHere)
{
    Listen();
    logger->AdviseMessageLogged(nullptr, 0, false);
    test::Say(*logger, "Net", "one");
    EXPECT_TRUE(handler->events.empty());
    Listen();
    test::Say(*logger, "Net", "two");
    EXPECT_EQ(handler->events.size(), 1U);
}

TEST_F(SynchronisedLoggerTest, IgnoresANullHandler)
{
    logger->AdviseMessageLogged(nullptr, 0, true);
    EXPECT_EQ(test::Say(*logger, "Net", "one"), TVX_OK);
}

TEST_F(SynchronisedLoggerTest, AnswersItsThreeInterfaces)
{
    EXPECT_EQ(Query<ILogger>(logger).Get(), logger.Get());
    EXPECT_EQ(Query<IObject>(logger).Get(), logger.Get());
    EXPECT_EQ(Query<IObjectBase>(logger).Get(), logger.Get());
    EXPECT_FALSE(Query<IEventHandler>(logger));
    EXPECT_TRUE(logger->IsUnique());
}

TEST_F(SynchronisedLoggerTest, KeepsOneReferenceOnTheInnerLoggerAndNoneOnHandlers)
{
    Listen();
    EXPECT_EQ(inner->GetRefCount(), 2U);
    EXPECT_TRUE(handler->IsUnique());
    test::Say(*logger, "Net", "one");
    EXPECT_EQ(inner->GetRefCount(), 2U);
    EXPECT_TRUE(handler->IsUnique());
    logger = nullptr;
    EXPECT_TRUE(inner->IsUnique());
}

TEST_F(SynchronisedLoggerTest, UnsubscribesFromTheInnerLoggerWhenItDies)
{
    Listen();
    EXPECT_EQ(inner->subscriptions, 1);
    logger = nullptr;
    EXPECT_EQ(inner->subscriptions, 0);
    test::Say(*inner, "Net", "one");
    EXPECT_TRUE(handler->events.empty());
}

TEST_F(SynchronisedLoggerTest, LetsAHandlerLogAgain)
{
    Texts messages;
    handler->action = [&](const test::SeenEvent& event)
    {
        messages.push_back(GetMessageOf(event.param));
        if (messages.size() < 3)
            test::Say(*logger, "Net", "again");
    };
    Listen();
    test::Say(*logger, "Net", "one");
    EXPECT_EQ(messages, (Texts{"one", "again", "again"}));
}

TEST_F(SynchronisedLoggerTest, LetsAHandlerSubscribeAndUnsubscribe)
{
    const auto late = MakeRef<test::RecordingHandler>();
    handler->action = [&](const test::SeenEvent&)
    {
        logger->AdviseMessageLogged(late.Get(), 0, true);
        logger->AdviseMessageLogged(handler.Get(), 0, false);
    };
    Listen();
    test::Say(*logger, "Net", "one");
    test::Say(*logger, "Net", "two");
    EXPECT_EQ(handler->events.size(), 1U);
    EXPECT_EQ(late->events.size(), 2U);
}

// The module's own logger, which takes one thread at a time, writing to a file without a lock of its own.
class SynchronisedRealLogger : public testing::Test
{
protected:
    static constexpr int MessageCount = 200;

    SynchronisedRealLogger()
    {
        const auto file = folder.GetPath() / "log.txt";
        auto entries =
            ParseConfiguration("[Default]\nToStdOut=no\nToFile=yes\nLogFlushThreshold=1\nFilename=" + file.string(),
                               ConfigurationFormat::Ini, "test");
        inner->SetConfiguration(MakeRef<Configuration>("test", *entries).Get());
        const auto proxy = MakeRef<test::ImportProxy>(Ref<IObjectBase>(server));
        CBasicLogger::GetOrMake()->SetImport("CrashDumpServer", static_cast<IExportProxy*>(proxy.Get()));
    }

    ~SynchronisedRealLogger() override { CBasicLogger::GetOrMake()->ClearImports(); }

    void LogMany(int thread) const
    {
        const auto name = "Thread" + std::to_string(thread);
        for (int i = 0; i < MessageCount; ++i)
            test::Say(*logger, name.c_str(), (std::to_string(thread) + "/" + std::to_string(i)).c_str());
    }

    Texts ReadLines() const
    {
        Texts lines;
        std::ifstream stream(folder.GetPath() / "log.txt");
        for (std::string line; std::getline(stream, line);)
            lines.push_back(line.substr(line.rfind(' ') + 1));
        return lines;
    }

    test::ScratchFolder folder;
    Ref<CrashDumpServer> server = MakeRef<CrashDumpServer>();  // an import that is absent is complained of
    Ref<CBasicLogger> inner = MakeRef<CBasicLogger>();
    Ref<SynchronisedLogger> logger = MakeRef<SynchronisedLogger>(inner);
};

TEST_F(SynchronisedRealLogger, HandsEveryLineOfEightThreadsToHandlersInTheOrderOfTheFile)
{
    Texts heard;
    const auto handler = MakeRef<test::RecordingHandler>();
    handler->action = [&](const test::SeenEvent& event) { heard.push_back(GetMessageOf(event.param)); };
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    test::RunTogether([&](int thread) { LogMany(thread); });
    logger->AdviseMessageLogged(handler.Get(), 0, false);

    EXPECT_EQ(heard.size(), static_cast<std::size_t>(test::ThreadCount * MessageCount));
    EXPECT_EQ(ReadLines(), heard);
    std::map<char, int> next;  // of each thread: its own messages keep their order
    for (const auto& message : heard)
        EXPECT_EQ(message.substr(2), std::to_string(next[message[0]]++));
}

TEST_F(SynchronisedRealLogger, TakesSubscriptionsWhileOthersLog)
{
    const auto steady = MakeRef<test::RecordingHandler>();
    logger->AdviseMessageLogged(steady.Get(), 0, true);
    const auto subscribe = [&]
    {
        const auto handler = MakeRef<test::RecordingHandler>();
        for (int i = 0; i < MessageCount; ++i)
        {
            logger->AdviseMessageLogged(handler.Get(), 0, true);
            logger->AdviseMessageLogged(handler.Get(), 0, false);
        }
    };
    test::RunTogether([&](int thread) { thread % 2 == 0 ? LogMany(thread) : subscribe(); });
    logger->AdviseMessageLogged(steady.Get(), 0, false);
    EXPECT_EQ(steady->events.size(), static_cast<std::size_t>(test::ThreadCount / 2 * MessageCount));
}

TEST_F(SynchronisedRealLogger, SetsAndGetsLevelsWhileOthersLog)
{
    const auto change = [&]
    {
        for (int i = 0; i < MessageCount; ++i)
        {
            std::int32_t level = 0;
            logger->SetLevel("Thread0", i % 2 == 0 ? LogLevel::Error : LogLevel::Trace);
            logger->GetLevel("Thread0", &level);
            EXPECT_TRUE(level == LogLevel::Error || level == LogLevel::Trace) << level;
        }
    };
    test::RunTogether([&](int thread) { thread % 2 == 0 ? LogMany(thread) : change(); });
    EXPECT_GE(ReadLines().size(), static_cast<std::size_t>(3 * MessageCount));
}

TEST_F(SynchronisedRealLogger, LetsHandlersOfAllThreadsLogAgain)
{
    const auto handler = MakeRef<test::RecordingHandler>();
    handler->action = [&](const test::SeenEvent& event)
    {
        if (GetMessageOf(event.param) != "echo")
            test::Say(*logger, "Echo", "echo");
    };
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    test::RunTogether([&](int thread) { LogMany(thread); });
    logger->AdviseMessageLogged(handler.Get(), 0, false);
    EXPECT_EQ(handler->events.size(), static_cast<std::size_t>(2 * test::ThreadCount * MessageCount));
}

}  // namespace
}  // namespace tvx::host
