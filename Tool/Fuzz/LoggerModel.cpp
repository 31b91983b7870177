// SPDX-License-Identifier: MIT
#include "Platform/ThreadId.h"
#include "Tool/Checks/LoggerBench.h"
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/Listeners.h"
#include "Tool/Fuzz/TableWalker.h"

#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

namespace tvx::fuzz
{

namespace
{

constexpr const char* Names[] = {"Walk", "", "Walk.Other", "walk"};
constexpr const char* Texts[] = {"text", "", "several\nlines", "\xFF"};
constexpr std::int32_t Levels[] = {1, 2, 3, 4, 5, 6, 0, 7, -5};
constexpr const char* LevelNames[] = {"TRACE", "DEBUG", "INFO ", "WARN ", "ERROR", "FATAL"};

// A path, and what traces show of it.
struct ShownPath
{
    const char* path;
    const char* shown;
};
constexpr ShownPath Paths[] = {
    {"a/file.cpp", "file.cpp"}, {"C:\\a\\file", "file"}, {"a/", "."}, {"", ""}, {nullptr, ""}};

constexpr EventKind<ILogger> Events[] = {{"MessageLogged", &ILogger::AdviseMessageLogged}};

template <class Value, std::size_t Count>
const Value& Choose(const Value (&from)[Count], std::uint32_t number)
{
    return from[number % Count];
}

std::string ShowText(const char* text)
{
    return check::Show(text);
}

// A record, and the message of which it is one, in the same words.
std::string Describe(ILogData& record)
{
    return ShowText(record.GetLoggerName()) + " " + std::to_string(record.GetLevel()) + " " +
           ShowText(record.GetSource()) + " " + ShowText(record.GetScope()) + " " + ShowText(record.GetFile()) + " " +
           std::to_string(record.GetLine()) + " " + ShowText(record.GetMessage());
}

std::string Describe(const check::Message& message)
{
    return ShowText(message.logger) + " " + std::to_string(static_cast<std::uint32_t>(message.level)) + " " +
           ShowText(message.source) + " " + ShowText(message.scope) + " " + ShowText(message.file) + " " +
           std::to_string(message.line) + " " + ShowText(message.text);
}

// A text as a line shows it.
std::string Print(const char* text)
{
    return text == nullptr ? "" : text;
}

// What is written for a message, at some time. Of its path the file is shown.
std::string MakeLine(const check::Message& message, const char* file)
{
    const bool isNamed = message.level >= LogLevel::Trace && message.level <= LogLevel::Fatal;
    auto line = std::string("2000-01-01 00:00:00 ") + (isNamed ? LevelNames[message.level - 1] : "     ") + " [" +
                Print(message.source) + "] ";
    if (message.level == LogLevel::Trace)
        line += "[" + Print(message.scope) + "] [" + file + ":" + std::to_string(message.line) +
                "] [ThreadID=" + std::to_string(Platform::GetCurrentThreadId()) + "] ";
    return line + Print(message.text) + "\n";
}

// The logger beside the levels of its names. There is one for the whole module, so each walk begins by setting them.
class LoggerModel final : public TableWalker<LoggerModel>
{
public:
    explicit LoggerModel(check::Trial& trial)
        : trial_(trial),
          listeners_(Events, [this](const check::SeenEvent& event) { return Hear(event); }),
          logger_(trial.Get<ILogger>(check::LoggerExport))
    {
        static_cast<void>(trial_.TakeOutput([&] { SetAllLevels(); }));
        listeners_.Watch(*logger_);
        listeners_.Subscribe(0, 0, 1);
    }

    // Also one by one: a logger that forgets nobody by null would go on calling them.
    ~LoggerModel() override
    {
        for (std::uint32_t handler = 0; handler < 16; ++handler)
            listeners_.Unsubscribe(0, handler, 0);
        listeners_.UnsubscribeNull(0, 0);
    }

    void Log(const Step& step)
    {
        const auto name = step.first / 9;
        Say({.logger = Choose(Names, name), .level = Choose(Levels, step.first), .text = Choose(Texts, step.second)},
            Choose(Paths, step.second / 4), GetLevelOf(name));
    }

    void SetLevel(const Step& step) { SetLevel(step.first, Choose(Levels, step.second)); }

    void GetLevel(const Step& step)
    {
        std::int32_t level = -99;
        trial_.Gives("GetLevel", logger_->GetLevel(Choose(Names, step.first), &level), TVX_OK);
        trial_.Equal("the level", level, GetLevelOf(step.first));
    }

    // A null text is written as an empty one, and null in the record.
    void LogNulls(const Step& step)
    {
        const auto unlessNull = [&](std::uint32_t bit) { return (step.second >> bit & 1) == 0 ? "given" : nullptr; };
        Say({.logger = Choose(Names, step.first),
             .level = Choose(Levels, step.first / 4),
             .source = unlessNull(0),
             .scope = unlessNull(1),
             .line = step.second,
             .text = unlessNull(2)},
            Choose(Paths, step.second >> 3), GetLevelOf(step.first));
    }

    // Every number is a level.
    void LogAnyLevel(const Step& step)
    {
        Say({.logger = Choose(Names, step.first), .level = static_cast<std::int32_t>(step.second)}, Paths[0],
            GetLevelOf(step.first));
    }

    void SetAnyLevel(const Step& step) { SetLevel(step.first, static_cast<std::int32_t>(step.second)); }

    // A name that nobody set a level for has the first one, whether it was used before or not.
    void UseNewName(const Step& step)
    {
        const auto name = "Walk " + std::to_string(step.first);
        std::int32_t level = -99;
        trial_.Gives("GetLevel of a new name", logger_->GetLevel(name.c_str(), &level), TVX_OK);
        trial_.Equal("the level of a new name", level, FirstLevel);
        Say({.logger = name.c_str(), .level = Choose(Levels, step.second)}, Paths[0], FirstLevel);
    }

    // What no name stands for is for the logger to choose, and with it whether the message is written.
    void LogUnnamed(const Step& step)
    {
        const check::Message message = {.logger = nullptr, .level = Choose(Levels, step.first)};
        static_cast<void>(Log(message));
    }

    void GetLevelForNobody(const Step& step)
    {
        trial_.Reports("GetLevel with a null out", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                       [&] { return logger_->GetLevel(Choose(Names, step.first), nullptr); });
    }

    void Subscribe(const Step& step) { listeners_.Subscribe(0, step.first, step.second); }

    void Unsubscribe(const Step& step) { listeners_.Unsubscribe(0, step.first, step.second); }

    void SubscribeNull(const Step& step) { listeners_.SubscribeNull(0, step.second); }

    // Rarely: nobody hears anything for a while.
    void UnsubscribeNull(const Step& step)
    {
        if (step.first % 4 == 0)
            listeners_.UnsubscribeNull(0, step.second);
    }

    // A record that is there already is told of once more, and not written.
    void FireAgain(const Step& step)
    {
        const auto& kept = records_[step.first % records_.size()];
        if (!kept.record)
            return;
        listeners_.Expect("MessageLogged", kept.words);
        trial_.Writes("FireMessageLogged", "", [&] { logger_->FireMessageLogged(kept.record.Get()); });
        heard_ = nullptr;
    }

    void AskAsObject(const Step& step)
    {
        fuzz::AskAsObject(trial_, "the logger", logger_, step.second);
        if (const auto& record = records_[step.first % records_.size()].record)
            fuzz::AskAsObject(trial_, "a record", record, step.second);
    }

    void DropRecordBeforeWitnesses(const Step& step)
    {
        auto& record = records_[step.first % records_.size()].record;
        if (record)
            EndBeforeWitnesses(trial_, "a record", record);
    }

    void GetExportAgain(const Step&)
    {
        trial_.Same("the logger, asked for again,", trial_.Get<ILogger>(check::LoggerExport).Get(), logger_.Get());
    }

    // Whatever the level is, every call is an event.
    void Compare() override
    {
        listeners_.Compare(trial_);
        for (const auto& [record, words] : records_)
        {
            if (!record)
                continue;
            trial_.Equal("a record that is kept", Describe(*record), words);
            CompareCount(trial_, "a record that is kept", *record, 1);
        }
    }

    static constexpr Operation<LoggerModel> Operations[] = {
        {"log", &LoggerModel::Log},
        {"set-level", &LoggerModel::SetLevel},
        {"get-level", &LoggerModel::GetLevel},
        {"log-nulls", &LoggerModel::LogNulls},
        {"log-any-level", &LoggerModel::LogAnyLevel},
        {"set-any-level", &LoggerModel::SetAnyLevel},
        {"use-new-name", &LoggerModel::UseNewName},
        {"log-unnamed", &LoggerModel::LogUnnamed},
        {"get-level-for-nobody", &LoggerModel::GetLevelForNobody},
        {"subscribe", &LoggerModel::Subscribe},
        {"unsubscribe", &LoggerModel::Unsubscribe},
        {"subscribe-null", &LoggerModel::SubscribeNull},
        {"unsubscribe-null", &LoggerModel::UnsubscribeNull},
        {"fire-again", &LoggerModel::FireAgain},
        {"ask-as-object", &LoggerModel::AskAsObject},
        {"drop-record-before-witnesses", &LoggerModel::DropRecordBeforeWitnesses},
        {"get-export-again", &LoggerModel::GetExportAgain},
    };

private:
    struct Record
    {
        Ref<ILogData> record;
        std::string words;
    };

    std::int32_t GetLevelOf(std::uint32_t name) const { return levels_[name % levels_.size()]; }

    void SetLevel(std::uint32_t name, std::int32_t level)
    {
        trial_.Gives("SetLevel", logger_->SetLevel(Choose(Names, name), level), TVX_OK);
        levels_[name % levels_.size()] = level;
    }

    // A name that is new may say what imports are missing.
    void SetAllLevels()
    {
        for (std::size_t name = 0; name < levels_.size(); ++name)
        {
            static_cast<void>(logger_->SetLevel(Names[name], FirstLevel));
            levels_[name] = FirstLevel;
        }
    }

    // Called inside the event.
    std::string Hear(const check::SeenEvent& event)
    {
        heard_ = Ref<ILogData>(reinterpret_cast<ILogData*>(static_cast<std::uintptr_t>(event.param)));
        return heard_ ? Describe(*heard_) : "no record";
    }

    // Gives what is written. The record is kept for a while by whoever heard of it.
    std::string Log(const check::Message& message)
    {
        Result result = TVX_E_FAIL;
        const auto words = Describe(message);
        listeners_.Expect("MessageLogged", words);
        auto written = trial_.TakeOutput(
            [&]
            {
                result = logger_->Log(message.logger, message.level, message.source, message.scope, message.file,
                                      message.line, message.text);
            });
        trial_.Gives("Log", result, TVX_OK);
        if (heard_)
            records_[made_++ % records_.size()] = {std::move(heard_), words};
        return written;
    }

    void Say(check::Message message, const ShownPath& path, std::int32_t lowest)
    {
        message.file = path.path;
        const auto written = Log(message);
        const auto due = message.level < lowest ? "" : MakeLine(message, path.shown);
        trial_.Equal("what a message writes, without the time,", check::WithoutTimes(written),
                     check::WithoutTimes(due));
    }

    static constexpr std::int32_t FirstLevel = 3;

    check::Trial& trial_;
    Ref<ILogData> heard_;
    std::array<Record, 4> records_;
    std::size_t made_ = 0;
    Listeners<ILogger> listeners_;
    Ref<ILogger> logger_;
    std::array<std::int32_t, std::size(Names)> levels_{};
};

constexpr auto OperationNames = GetNames(LoggerModel::Operations);

}  // namespace

const Walk LoggerWalk = {"logger", check::LoggerExport, OperationNames, &LoggerModel::Start};

}  // namespace tvx::fuzz
