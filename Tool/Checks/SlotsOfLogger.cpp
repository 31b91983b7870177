// SPDX-License-Identifier: MIT
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Slots.h"

namespace tvx::check
{

namespace
{

constexpr const char LoggerName[] = "slots";
constexpr std::uint64_t Cookie = 0xFEDCBA9876543210;

// A record of this side: what is logged does not matter where one is only passed on.
class BlankRecord final : public ClassImpl<BlankRecord, ILogData>
{
public:
    using Interfaces = InterfaceList<ILogData, IObject, IObjectBase>;

    const char* GetLoggerName() override { return ""; }
    std::uint32_t GetLevel() override { return LogLevel::Info; }
    const char* GetSource() override { return ""; }
    const char* GetScope() override { return ""; }
    const char* GetFile() override { return ""; }
    std::uint32_t GetLine() override { return 0; }
    const char* GetMessage() override { return ""; }
};

Ref<ILogger> GetLogger(Trial& trial)
{
    return trial.Get<ILogger>(LoggerExport);
}

void Logs(Trial& trial)
{
    const auto logger = GetLogger(trial);
    Result result = TVX_E_FAIL;
    const auto log = [&]
    {
        result =
            CallILoggerLog(ToC<ILogger>(logger), LoggerName, LogLevel::Error, "source", "scope", "file", 7, "message");
    };
    const auto came = trial.TakeOutput(log);
    constexpr const char line[] = " ERROR [source] message\n";
    trial.Expect(came.ends_with(line), std::string("slot 11 (Log) of ILogger to write a line that ends with ") + line,
                 Show(came));
    trial.Gives("slot 11 (Log) of ILogger", result, TVX_OK);
}

// Whether a message of the level 0, which a logger that nobody has configured does not take, is written.
bool TakesLowest(Trial& trial, const Ref<ILogger>& logger)
{
    const auto came = trial.TakeOutput([&] { logger->Log(LoggerName, 0, "source", "", "", 0, "message"); });
    return came.ends_with("message\n");
}

// The level shows in what is written and in what GetLevel gives: one of them is enough.
void SetsLevel(Trial& trial)
{
    const auto logger = GetLogger(trial);
    trial.Gives("slot 12 (SetLevel) of ILogger", CallILoggerSetLevel(ToC<ILogger>(logger), LoggerName, 0), TVX_OK);
    if (TakesLowest(trial, logger))
        return;
    RoomyOut<std::int32_t> level;
    level.value = LogLevel::Fatal;
    logger->GetLevel(LoggerName, &level.value);
    trial.Equal("the level after slot 12 (SetLevel) has set it", level.value, 0);
}

void GetsLevel(Trial& trial)
{
    const auto logger = GetLogger(trial);
    RoomyOut<std::int32_t> level;
    trial.Gives("slot 13 (GetLevel) of ILogger", CallILoggerGetLevel(ToC<ILogger>(logger), LoggerName, &level.value),
                TVX_OK);
    trial.Equal("the level of a logger that nobody has configured, by slot 13,", level.value,
                std::int32_t{LogLevel::Info});
}

// A message that is logged, and where that tells nobody, an event that is fired directly.
void Notify(Trial& trial, ILogger& logger, const RecordingHandler& handler)
{
    const auto record = MakeRef<BlankRecord>();
    const auto told = handler.events.size();
    static_cast<void>(
        trial.TakeOutput([&] { logger.Log(LoggerName, LogLevel::Error, "source", "", "", 0, "message"); }));
    if (handler.events.size() == told)
        logger.FireMessageLogged(record.Get());
}

// The witness is subscribed by the same slot and stays, so that the silence of the other handler can be trusted.
void Advises(Trial& trial)
{
    const auto logger = GetLogger(trial);
    const auto handler = MakeRef<RecordingHandler>();
    const auto witness = MakeRef<RecordingHandler>();
    void* const face = ToC<ILogger>(logger);
    CallILoggerAdviseMessageLogged(face, ToC<IEventHandler>(handler), Cookie, true);
    CallILoggerAdviseMessageLogged(face, ToC<IEventHandler>(witness), 1, true);
    Notify(trial, *logger, *handler);
    CallILoggerAdviseMessageLogged(face, ToC<IEventHandler>(handler), 0, false);
    Notify(trial, *logger, *witness);
    CallILoggerAdviseMessageLogged(face, ToC<IEventHandler>(witness), 0, false);
    trial.Equal("the number of events until slot 14 (AdviseMessageLogged) removes the handler", handler->events.size(),
                1u);
    trial.Equal("the cookie given to slot 14 (AdviseMessageLogged)", handler->events[0].userData, Cookie);
    trial.Equal("the number of events of the handler that slot 14 (AdviseMessageLogged) did not remove",
                witness->events.size(), 2u);
}

void Fires(Trial& trial)
{
    const auto logger = GetLogger(trial);
    const auto handler = MakeRef<RecordingHandler>();
    const auto record = MakeRef<BlankRecord>();
    logger->AdviseMessageLogged(handler.Get(), Cookie, true);
    CallILoggerFireMessageLogged(ToC<ILogger>(logger), ToC<ILogData>(record));
    logger->AdviseMessageLogged(handler.Get(), 0, false);
    trial.Equal("the number of events that slot 15 (FireMessageLogged) fires", handler->events.size(), 1u);
    trial.Same("the param of the event of slot 15 (FireMessageLogged)",
               reinterpret_cast<const void*>(static_cast<std::uintptr_t>(handler->events[0].param)),
               ToC<ILogData>(record));
}

void CallsOnEvent(Trial& trial)
{
    const auto logger = GetLogger(trial);
    const auto handler = MakeRef<RecordingHandler>();
    logger->AdviseMessageLogged(handler.Get(), Cookie, true);
    Notify(trial, *logger, *handler);
    logger->AdviseMessageLogged(handler.Get(), 0, false);
    trial.Equal("the number of calls of OnEvent", handler->events.size(), 1u);
    const auto& event = handler->events[0];
    trial.Same("the sender that OnEvent is called with", event.sender, logger.Get());
    trial.Equal("the interface that OnEvent is called with", event.interfaceId, ILogger::Id);
    trial.Equal("the event that OnEvent is called with", event.eventName, "MessageLogged");
    trial.Expect(event.param != 0, "OnEvent to be called with a record for its param", "0");
    trial.Equal("the user data that OnEvent is called with", event.userData, Cookie);
}

constexpr Check Checks[] = {
    {"slot-logger-11-log", "Log of a logger that nobody has configured is called by its number.",
     "Slot 11 of ILogger is Log: it writes a line of what its seven arguments say.", Logs},
    {"slot-logger-12-set-level", "SetLevel of the logger is called by its number.",
     "Slot 12 of ILogger is SetLevel: it sets the lowest level that is written.", SetsLevel},
    {"slot-logger-13-get-level", "GetLevel of a logger that nobody has configured is called by its number.",
     "Slot 13 of ILogger is GetLevel: it gives the lowest level that is written, at first 3.", GetsLevel},
    {"slot-logger-14-advise-message-logged",
     "AdviseMessageLogged of the logger is called by its number, to subscribe and to unsubscribe.",
     "Slot 14 of ILogger is AdviseMessageLogged: it subscribes a handler with a cookie of 64 bits, and unsubscribes "
     "it.",
     Advises},
    {"slot-logger-15-fire-message-logged", "FireMessageLogged of the logger is called by its number.",
     "Slot 15 of ILogger is FireMessageLogged: it fires the event with the record as its param.", Fires},
    {"slot-logger-event-handler-11-on-event", "The logger fires an event to a handler of the caller's.",
     "Slot 11 of IEventHandler is OnEvent: a module calls it with the sender, two texts and two values of 64 bits.",
     CallsOnEvent},
};

}  // namespace

extern const Family SlotsOfLoggerFamily = {"slots", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
