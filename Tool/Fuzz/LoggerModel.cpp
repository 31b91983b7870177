// SPDX-License-Identifier: MIT
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/TableWalker.h"

#include <array>
#include <string>

namespace tvx::fuzz
{

namespace
{

constexpr const char* Names[] = {"Walk", "", "Walk.Other", "walk"};
constexpr const char* Texts[] = {"text", "", "several\nlines", "\xFF"};
constexpr std::int32_t Levels[] = {1, 2, 3, 4, 5, 6, 0, 7, -5};

template <class Value, std::size_t Count>
const Value& Choose(const Value (&from)[Count], std::uint32_t number)
{
    return from[number % Count];
}

// The logger beside the levels of its names. There is one for the whole module, so each walk begins by setting them.
class LoggerModel final : public TableWalker<LoggerModel>
{
public:
    explicit LoggerModel(check::Trial& trial)
        : trial_(trial),
          handler_(MakeRef<check::RecordingHandler>()),
          logger_(trial.Get<ILogger>(check::LoggerExport))
    {
        static_cast<void>(trial_.TakeOutput([&] { SetAllLevels(); }));
        logger_->AdviseMessageLogged(handler_.Get(), 1, true);
    }

    ~LoggerModel() override { logger_->AdviseMessageLogged(handler_.Get(), 1, false); }

    void Log(const Step& step)
    {
        const auto level = Choose(Levels, step.first);
        const auto* const text = Choose(Texts, step.second);
        const auto written = trial_.TakeOutput(
            [&] {
                result_ = logger_->Log(Choose(Names, step.first / 9), level, "source", "scope", "a/file.cpp", 7, text);
            });
        trial_.Gives("Log", result_, TVX_OK);
        const bool isDue = level >= levels_[step.first / 9 % levels_.size()];
        trial_.Equal("whether a line is written", !written.empty(), isDue);
        trial_.Expect(!isDue || written.ends_with(std::string(text) + "\n"), "a line to end with its message",
                      check::Show(written));
        ++logged_;
    }

    void SetLevel(const Step& step)
    {
        const auto level = Choose(Levels, step.second);
        trial_.Gives("SetLevel", logger_->SetLevel(Choose(Names, step.first), level), TVX_OK);
        levels_[step.first % levels_.size()] = level;
    }

    void GetLevel(const Step& step)
    {
        std::int32_t level = -99;
        trial_.Gives("GetLevel", logger_->GetLevel(Choose(Names, step.first), &level), TVX_OK);
        trial_.Equal("the level", level, levels_[step.first % levels_.size()]);
    }

    // Whatever the level is, every call is an event.
    void Compare() override
    {
        trial_.Equal("the number of events", handler_->events.size(), logged_);
        for (const auto& event : handler_->events)
            trial_.Equal("the name of an event", event.eventName, "MessageLogged");
    }

    static constexpr Operation<LoggerModel> Operations[] = {
        {"log", &LoggerModel::Log},
        {"set-level", &LoggerModel::SetLevel},
        {"get-level", &LoggerModel::GetLevel},
    };

private:
    // A name that is new may say what imports are missing.
    void SetAllLevels()
    {
        for (std::size_t name = 0; name < levels_.size(); ++name)
        {
            static_cast<void>(logger_->SetLevel(Names[name], FirstLevel));
            levels_[name] = FirstLevel;
        }
    }

    static constexpr std::int32_t FirstLevel = 3;

    check::Trial& trial_;
    Ref<check::RecordingHandler> handler_;
    Ref<ILogger> logger_;
    std::array<std::int32_t, std::size(Names)> levels_{};
    std::size_t logged_ = 0;
    Result result_ = TVX_OK;
};

constexpr auto OperationNames = GetNames(LoggerModel::Operations);

}  // namespace

const Walk LoggerWalk = {"logger", check::LoggerExport, OperationNames, &LoggerModel::Start};

}  // namespace tvx::fuzz
