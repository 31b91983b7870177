// SPDX-License-Identifier: MIT
#include "Tool/Checks/LoggerBench.h"

namespace tvx::check
{

namespace
{

using Cookies = std::vector<std::uint64_t>;

void TellsOfAMessage(Trial& trial)
{
    LoggerBench logger(trial);
    const MessageListener listener(logger, 0xFEDCBA9876543210u);
    logger.Log({});
    trial.Equal("the number of events of one message", listener.messages.size(), 1u);
    const auto& event = listener.messages[0].event;
    trial.Equal("the event's interface", event.interfaceId, ILogger::Id);
    trial.Equal("the event's name", event.eventName, "MessageLogged");
    trial.Equal("the cookie of the event", event.userData, 0xFEDCBA9876543210u);
    trial.Same("the sender, asked as the logger's IObject,", event.sender,
               trial.QueryAs<IObject>(trial.GetExport(LoggerExport), "the logger").Get());
}

void TellsOfAMessageBelowTheMinimum(Trial& trial)
{
    LoggerBench logger(trial);
    const MessageListener listener(logger);
    for (const std::int32_t level : {2, 1, -5})
        trial.Equal("what a message below the minimum writes", logger.Log({.level = level}), "");
    trial.Equal("the number of events of three messages", listener.messages.size(), 3u);
}

void TellsOfAMessageThatGoesNowhere(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Configure({{"Default\\ToStdOut", false}});
    const MessageListener listener(logger);
    trial.Equal("what a message with both outputs off writes", logger.Log({.level = LogLevel::Fatal}), "");
    trial.Equal("the number of events of the message", listener.messages.size(), 1u);
}

void WritesTheLineBeforeItTells(Trial& trial)
{
    LoggerBench logger(trial);
    MessageListener listener(logger);
    std::string before;
    listener.action = [&](const SeenMessage&) { before = trial.TakeOutput(); };
    const auto after = logger.Log({});
    trial.Equal("what stands on standard output when the event comes", WithoutTimes(before), InfoLine);
    trial.Equal("what is written after the event", after, "");
}

void TellsTwiceWhoSubscribedTwice(Trial& trial)
{
    LoggerBench logger(trial);
    const MessageListener listener(logger, 1);
    logger->AdviseMessageLogged(listener.GetHandler(), 2, true);
    logger.Log({});
    trial.Equal("the cookies of the events", listener.GetCookies(), Cookies{1, 2});
    logger->AdviseMessageLogged(listener.GetHandler(), 0, false);
    logger.Log({});
    trial.Equal("the cookies, after one removal and a second message,", listener.GetCookies(), Cookies{1, 2, 2});
}

void TellsInTheOrderOfSubscribing(Trial& trial)
{
    LoggerBench logger(trial);
    MessageListener listeners[] = {MessageListener(logger, 1), MessageListener(logger, 2), MessageListener(logger, 3)};
    Cookies order;
    for (auto& listener : listeners)
        listener.action = [&](const SeenMessage& message) { order.push_back(message.event.userData); };
    logger.Log({});
    trial.Equal("the order of the handlers", order, Cookies{1, 2, 3});
}

void TellsNobodyWhoLeft(Trial& trial)
{
    LoggerBench logger(trial);
    const MessageListener stays(logger);
    const MessageListener leaves(logger);
    logger->AdviseMessageLogged(leaves.GetHandler(), 0, false);
    logger->AdviseMessageLogged(leaves.GetHandler(), 0, false);
    logger.Log({});
    trial.Equal("the number of events of a removed handler", leaves.messages.size(), 0u);
    trial.Equal("the number of events of the other handler", stays.messages.size(), 1u);
}

void RemovesEverybodyByNull(Trial& trial)
{
    LoggerBench logger(trial);
    const MessageListener first(logger);
    const MessageListener second(logger);
    logger->AdviseMessageLogged(nullptr, 0, false);
    logger.Log({});
    trial.Equal("the number of events after everybody was removed", first.messages.size() + second.messages.size(), 0u);
}

void IgnoresANullHandler(Trial& trial)
{
    LoggerBench logger(trial);
    logger->AdviseMessageLogged(nullptr, 1, true);
    const MessageListener listener(logger);
    logger.Log({});
    trial.Equal("the number of events of the handler behind a null one", listener.messages.size(), 1u);
}

void KeepsNoReferenceOnHandlers(Trial& trial)
{
    LoggerBench logger(trial);
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    trial.Equal("the references on a subscribed handler", handler->GetRefCount(), 1u);
    logger->AdviseMessageLogged(handler.Get(), 0, false);
    trial.Equal("the references on a removed handler", handler->GetRefCount(), 1u);
}

void LetsAHandlerLog(Trial& trial)
{
    LoggerBench logger(trial);
    MessageListener listener(logger);
    listener.action = [&](const SeenMessage&)
    {
        if (listener.messages.size() == 1)
            logger->Log("Main", LogLevel::Warn, "Handler", nullptr, nullptr, 0, "heard");
    };
    logger.Writes("a message whose handler logs in its turn", {}, std::string(InfoLine) + " WARN  [Handler] heard\n");
    trial.Equal("the number of events of both messages", listener.messages.size(), 2u);
}

// A record of the check's own, for which the logger is only the messenger.
class OwnRecord final : public ClassImpl<OwnRecord, ILogData>
{
public:
    using Interfaces = InterfaceList<ILogData, IObject, IObjectBase>;

    const char* GetLoggerName() override { return "Own"; }
    std::uint32_t GetLevel() override { return 6; }
    const char* GetSource() override { return "Own"; }
    const char* GetScope() override { return nullptr; }
    const char* GetFile() override { return nullptr; }
    std::uint32_t GetLine() override { return 0; }
    const char* GetMessage() override { return "own"; }
};

void PassesOnARecordOfTheCallersOwn(Trial& trial)
{
    LoggerBench logger(trial);
    const auto record = MakeRef<OwnRecord>();
    {
        const MessageListener listener(logger, 5);
        trial.Writes("FireMessageLogged", "", [&] { logger->FireMessageLogged(record.Get()); });
        trial.Equal("the cookies of the events of FireMessageLogged", listener.GetCookies(), Cookies{5});
        trial.Equal("the event's interface", listener.messages[0].event.interfaceId, ILogger::Id);
        trial.Equal("the event's name", listener.messages[0].event.eventName, "MessageLogged");
        trial.Same("the event's record", listener.messages[0].record.Get(), record.Get());
    }
    trial.Equal("the references on the record afterwards", record->GetRefCount(), 1u);
}

constexpr Check Checks[] = {
    {"logger-tells-of-a-message", "A message is logged while a handler is subscribed.",
     "Each message fires \"MessageLogged\" of ILogger/1.0 once, with the logger as sender and the handler's cookie.",
     TellsOfAMessage},
    {"logger-tells-of-a-message-below-the-minimum", "Messages are logged below the minimum level.",
     "Handlers see all messages; the minimum level is for the outputs only.", TellsOfAMessageBelowTheMinimum},
    {"logger-tells-of-a-message-that-goes-nowhere", "A message is logged while both outputs are off.",
     "Handlers see all messages, also when neither standard output nor a file is to be written.",
     TellsOfAMessageThatGoesNowhere},
    {"logger-writes-the-line-before-it-tells", "A handler looks at standard output.",
     "The line of a message is written before its event is fired.", WritesTheLineBeforeItTells},
    {"logger-tells-twice-who-subscribed-twice", "The same handler is subscribed with two cookies, and removed once.",
     "Every subscription counts for itself; a removal takes the oldest one of the handler.",
     TellsTwiceWhoSubscribedTwice},
    {"logger-tells-in-the-order-of-subscribing", "Three handlers note when they are called.",
     "Handlers are called in the order in which they were subscribed.", TellsInTheOrderOfSubscribing},
    {"logger-tells-nobody-who-left", "One of two handlers is removed, twice.",
     "A removed handler hears nothing more, the others are not touched, and removing one that is not there does "
     "nothing.",
     TellsNobodyWhoLeft},
    {"logger-removes-everybody-by-null", "A null handler is removed while two are subscribed.",
     "Removing a null handler removes every handler.", RemovesEverybodyByNull},
    {"logger-ignores-a-null-handler", "A null handler is subscribed before another one.",
     "Subscribing a null handler does nothing.", IgnoresANullHandler},
    {"logger-keeps-no-reference-on-handlers", "The references on a handler are counted.",
     "A subscription keeps no reference: a handler that goes away has to leave first.", KeepsNoReferenceOnHandlers},
    {"logger-lets-a-handler-log", "A handler logs a message while it is told of another.",
     "A handler may log: its message is written and fires an event of its own.", LetsAHandlerLog},
    {"logger-passes-on-a-record-of-the-callers-own", "FireMessageLogged with a record that the caller made.",
     "FireMessageLogged fires the event with exactly that record, writes nothing, and keeps nothing.",
     PassesOnARecordOfTheCallersOwn},
};

}  // namespace

extern const Family LoggerEventsFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
