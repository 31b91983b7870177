// SPDX-License-Identifier: MIT
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/SlotsOfObjects.h"

namespace tvx::check
{

namespace
{

// The record of a message of which every text and number is another one, as the param of its event gives it. Where a logger
// tells of no message there is nothing to try.
Ref<ILogData> MakeRecord(Trial& trial)
{
    const auto logger = trial.Get<ILogger>(LoggerExport);
    const auto handler = MakeRef<RecordingHandler>();
    Ref<ILogData> record;
    handler->action = [&](const SeenEvent& event)
    {
        auto* const param = reinterpret_cast<IObjectBase*>(static_cast<std::uintptr_t>(event.param));
        record = IsObjectAddress(param) ? Query<ILogData>(param) : Ref<ILogData>();
    };
    logger->AdviseMessageLogged(handler.Get(), 1, true);
    static_cast<void>(trial.TakeOutput(
        [&] { logger->Log("name", LogLevel::Error, "source", "scope", "folder/file", 7, "message"); }));
    logger->AdviseMessageLogged(handler.Get(), 1, false);
    if (!record)
        trial.Skip("the logger gives no record of a message");
    return record;
}

Ref<IObject> MakeRecordObject(Trial& trial)
{
    return MakeRecord(trial);
}

template <FixedText Slot, const char* (*Call)(void* object), const char* (ILogData::*Operation)(), FixedText Expected>
void TellsText(Trial& trial)
{
    const std::string what = std::string("slot ") + Slot.characters + " of ILogData";
    const auto record = MakeRecord(trial);
    const char* const came = Call(ToC<ILogData>(record));
    ExpectText(trial, what, came, Expected.characters);
    trial.Same("the text of " + what + " and the one by name", (record.Get()->*Operation)(), came);
}

template <FixedText Slot, std::uint32_t (*Call)(void* object), std::uint32_t Expected>
void TellsNumber(Trial& trial)
{
    const auto record = MakeRecord(trial);
    trial.Equal(std::string("slot ") + Slot.characters + " of ILogData", Call(ToC<ILogData>(record)), Expected);
}

constexpr Check Checks[] = {
    {"slot-log-data-11-get-logger-name", "GetLoggerName of a record is called by its number.",
     "Slot 11 of ILogData is GetLoggerName: it gives the name of the logger.",
     TellsText<"11 (GetLoggerName)", CallILogDataGetLoggerName, &ILogData::GetLoggerName, "name">},
    {"slot-log-data-12-get-level", "GetLevel of a record is called by its number.",
     "Slot 12 of ILogData is GetLevel: it gives the level as it was passed.",
     TellsNumber<"12 (GetLevel)", CallILogDataGetLevel, LogLevel::Error>},
    {"slot-log-data-13-get-source", "GetSource of a record is called by its number.",
     "Slot 13 of ILogData is GetSource: it gives who speaks.",
     TellsText<"13 (GetSource)", CallILogDataGetSource, &ILogData::GetSource, "source">},
    {"slot-log-data-14-get-scope", "GetScope of a record is called by its number.",
     "Slot 14 of ILogData is GetScope: it gives the function or the like.",
     TellsText<"14 (GetScope)", CallILogDataGetScope, &ILogData::GetScope, "scope">},
    {"slot-log-data-15-get-file", "GetFile of a record is called by its number.",
     "Slot 15 of ILogData is GetFile: it gives the path of the source file as it was passed.",
     TellsText<"15 (GetFile)", CallILogDataGetFile, &ILogData::GetFile, "folder/file">},
    {"slot-log-data-16-get-line", "GetLine of a record is called by its number.",
     "Slot 16 of ILogData is GetLine: it gives the line in the source file.",
     TellsNumber<"16 (GetLine)", CallILogDataGetLine, 7>},
    {"slot-log-data-17-get-message", "GetMessage of a record is called by its number.",
     "Slot 17 of ILogData is GetMessage: it gives the message.",
     TellsText<"17 (GetMessage)", CallILogDataGetMessage, &ILogData::GetMessage, "message">},
};

}  // namespace

extern const Family SlotsOfLogDataFamily = {"slots", LoggerExport, Needs::Module, Checks};
extern const Family SlotsOfLogDataObjectFamily = {"slots", LoggerExport, Needs::Module,
                                                  ObjectSlots<"log-data", MakeRecordObject>};

}  // namespace tvx::check
