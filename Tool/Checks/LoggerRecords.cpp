// SPDX-License-Identifier: MIT
#include "Tool/Checks/LoggerBench.h"

#include <cstdint>

namespace tvx::check
{

namespace
{

// The record of the only message that was heard.
Ref<ILogData> TakeRecord(Trial& trial, const MessageListener& listener)
{
    trial.Equal("the number of events", listener.messages.size(), 1u);
    auto record = listener.messages[0].record;
    trial.Expect(static_cast<bool>(record), "the parameter of the event to be the record", "0");
    return record;
}

Ref<ILogData> LogAndTakeRecord(Trial& trial, LoggerBench& logger, const Message& message)
{
    const MessageListener listener(logger);
    logger.Log(message);
    return TakeRecord(trial, listener);
}

void ExpectText(Trial& trial, const std::string& what, const char* came, const char* expected)
{
    if (expected == nullptr)
        trial.Equal(what, came, nullptr);
    else
        trial.Equal(what, came, expected);
}

void ExpectTexts(Trial& trial, ILogData& record, const Message& message)
{
    ExpectText(trial, "GetLoggerName of the record", record.GetLoggerName(), message.logger);
    ExpectText(trial, "GetSource of the record", record.GetSource(), message.source);
    ExpectText(trial, "GetScope of the record", record.GetScope(), message.scope);
    ExpectText(trial, "GetFile of the record", record.GetFile(), message.file);
    ExpectText(trial, "GetMessage of the record", record.GetMessage(), message.text);
}

void HoldsWhatWasLogged(Trial& trial)
{
    LoggerBench logger(trial);
    const Message message = {.logger = "Net", .level = 5, .file = "C:\\src\\Socket.cpp", .line = 4294967295u};
    const auto record = LogAndTakeRecord(trial, logger, message);
    ExpectTexts(trial, *record, message);
    trial.Equal("GetLevel of the record", record->GetLevel(), 5u);
    trial.Equal("GetLine of the record", record->GetLine(), 4294967295u);
}

void KeepsEmptyTextsEmpty(Trial& trial)
{
    LoggerBench logger(trial);
    const Message message = {.logger = "", .source = "", .scope = "", .file = "", .text = ""};
    ExpectTexts(trial, *LogAndTakeRecord(trial, logger, message), message);
}

// Each alone, so that a flag that stands for several texts is seen.
void KeepsNullTextsNull(Trial& trial)
{
    LoggerBench logger(trial);
    Message messages[6];
    messages[0].logger = nullptr;
    messages[1].source = nullptr;
    messages[2].scope = nullptr;
    messages[3].file = nullptr;
    messages[4].text = nullptr;
    messages[5] = {.logger = nullptr, .source = nullptr, .scope = nullptr, .file = nullptr, .text = nullptr};
    for (const auto& message : messages)
        ExpectTexts(trial, *LogAndTakeRecord(trial, logger, message), message);
}

void KeepsEveryLevel(Trial& trial)
{
    LoggerBench logger(trial);
    for (const std::int32_t level : {0, 1, 6, 7, -1, INT32_MAX, INT32_MIN})
        trial.Equal("GetLevel of the record, the unsigned view of " + std::to_string(level) + ",",
                    LogAndTakeRecord(trial, logger, {.level = level})->GetLevel(), static_cast<std::uint32_t>(level));
}

void CopiesItsTexts(Trial& trial)
{
    LoggerBench logger(trial);
    std::string texts[] = {"Main", "Net", "Connect", "Socket.cpp", "opened"};
    const auto record = LogAndTakeRecord(trial, logger,
                                         {.logger = texts[0].c_str(),
                                          .source = texts[1].c_str(),
                                          .scope = texts[2].c_str(),
                                          .file = texts[3].c_str(),
                                          .text = texts[4].c_str()});
    for (auto& text : texts)
        text.assign(text.size(), '#');
    ExpectTexts(trial, *record, {});
}

void LivesAsLongAsItIsHeld(Trial& trial)
{
    LoggerBench logger(trial);
    std::vector<Ref<ILogData>> records;
    for (const char* const text : {"first", "second", "third"})
        records.push_back(LogAndTakeRecord(trial, logger, {.text = text}));
    ExpectTexts(trial, *records[0], {.text = "first"});
    ExpectTexts(trial, *records[1], {.text = "second"});
    ExpectTexts(trial, *records[2], {.text = "third"});
}

void BelongsToWhoHoldsItInTheEnd(Trial& trial)
{
    LoggerBench logger(trial);
    const auto record = LogAndTakeRecord(trial, logger, {});
    trial.Equal("the references on a record that is kept", record->GetRefCount(), 1u);
    trial.Equal("IsUnique of a record that is kept", record->IsUnique(), true);
}

void DiesWhenNobodyHoldsIt(Trial& trial)
{
    LoggerBench logger(trial);
    const auto mourner = MakeRef<RecordingHandler>();
    std::vector<std::string> namesDuring;
    MessageListener listener(logger);
    listener.action = [&](const SeenMessage& message)
    {
        if (message.record)
            message.record->SubscribeDestroyed(mourner.Get(), 7);
        listener.messages.clear();
        namesDuring = mourner->GetNames();
    };
    logger.Log({});
    trial.Equal("the events of the record while the handler runs", namesDuring, std::vector<std::string>());
    trial.Equal("the events of the record when Log has returned", mourner->GetNames(),
                std::vector<std::string>{"Destroyed"});
}

void AnswersItsInterfaces(Trial& trial)
{
    LoggerBench logger(trial);
    const auto record = LogAndTakeRecord(trial, logger, {});
    trial.Same("the record's ILogData", trial.QueryAs<ILogData>(record, "the record").Get(), record.Get());
    trial.Same("the record's IObject", trial.QueryAs<IObject>(record, "the record").Get(), record.Get());
    trial.Same("the record's IObjectBase", trial.QueryAs<IObjectBase>(record, "the record").Get(), record.Get());
    trial.Expect(!Query<ILogger>(record), "the record to refuse ILogger", "an answer");
}

constexpr Check Checks[] = {
    {"logger-record-holds-what-was-logged", "The record of a message is read.",
     "The record gives back name, level, source, scope, file, line and message exactly as they were passed to Log.",
     HoldsWhatWasLogged},
    {"logger-record-keeps-empty-texts-empty", "A message with empty texts.", "An empty text stays one and is not null.",
     KeepsEmptyTextsEmpty},
    {"logger-record-keeps-null-texts-null", "Messages with one null text each, and one with null texts only.",
     "A null text comes back as null, not as an empty text, so that handlers can tell the two apart.",
     KeepsNullTextsNull},
    {"logger-record-keeps-every-level", "Messages of levels of every kind.",
     "The record gives the level as it was passed, as an unsigned number of 32 bits.", KeepsEveryLevel},
    {"logger-record-copies-its-texts", "The caller's texts change after the call, while the record is kept.",
     "The record has copies of its own: the caller's texts may go as soon as Log returns.", CopiesItsTexts},
    {"logger-record-lives-as-long-as-it-is-held", "The records of three messages are kept.",
     "Each message has a record of its own, which later messages do not change.", LivesAsLongAsItIsHeld},
    {"logger-record-belongs-to-who-holds-it", "The references on a record are counted after Log.",
     "The logger lets go of the record when Log returns.", BelongsToWhoHoldsItInTheEnd},
    {"logger-record-dies-when-nobody-holds-it", "A handler subscribes to the record's \"Destroyed\".",
     "The record lives while handlers run, and is destroyed when Log lets go of it as the last.",
     DiesWhenNobodyHoldsIt},
    {"logger-record-answers-its-interfaces", "A record is asked for its interfaces.",
     "A record answers ILogData, IObject and IObjectBase, with the same face, and nothing of the logger.",
     AnswersItsInterfaces},
};

}  // namespace

extern const Family LoggerRecordsFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
