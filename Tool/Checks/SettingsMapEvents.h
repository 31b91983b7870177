// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Lines.h"
#include "Tool/Checks/Objects.h"

#include <string>
#include <utility>

namespace tvx::check
{

// The events of a settings map as its listener writes them down.
constexpr const char SwitchedOn[] = "BatchUpdatingModeChanged true";
constexpr const char SwitchedOff[] = "BatchUpdatingModeChanged false";
constexpr const char Changed[] = "Changed";

// Hears both events of a settings map and keeps a line for each: "Changed", or "BatchUpdatingModeChanged true" with the
// mode that came along. The map must not fire any more when this is gone.
class SettingsMapListener
{
public:
    explicit SettingsMapListener(ISimpleMap& map)
    {
        handler_->action = [this](const SeenEvent& event) { Hear(event); };
        map.SubscribeChanged(handler_.Get(), 0, true);
        map.SubscribeBatchUpdatingModeChanged(handler_.Get(), 0, true);
    }
    SettingsMapListener(const SettingsMapListener&) = delete;
    SettingsMapListener& operator=(const SettingsMapListener&) = delete;

    // What came since the last time.
    Lines Take() { return std::exchange(lines_, {}); }

private:
    void Hear(const SeenEvent& event)
    {
        const bool isChange = event.eventName == Changed;
        lines_.push_back(event.eventName + (isChange ? "" : GetMode(event.param)));
    }

    static const char* GetMode(std::uint64_t param)
    {
        auto* const mode = reinterpret_cast<IVariant*>(static_cast<std::uintptr_t>(param));
        bool value = false;
        if (mode == nullptr || TVX_FAILED(mode->GetBool(&value)))
            return " without a mode";
        return value ? " true" : " false";
    }

    Ref<RecordingHandler> handler_ = MakeRef<RecordingHandler>();
    Lines lines_;
};

// The states of a settings map: out of batch updating mode, in it, and in it with a write that is still to be told.
enum class SettingsMapState
{
    Immediate,
    Clean,
    Dirty,
};

inline Ref<ISimpleMap5> MakeMapIn(Trial& trial, SettingsMapState state)
{
    auto map = state == SettingsMapState::Immediate ? MakeImmediateSimpleMap(trial) : MakeSimpleMap(trial);
    if (state == SettingsMapState::Dirty)
        trial.Gives("SetString", map->SetString("before", "value"), TVX_OK);
    return map;
}

// The events of one step that begins in a state.
template <class Step>
void ExpectEvents(Trial& trial, SettingsMapState state, const std::string& what, const Lines& expected, Step&& step)
{
    const auto map = MakeMapIn(trial, state);
    SettingsMapListener listener(*map);
    trial.Gives(what, step(*map), TVX_OK);
    trial.Equal("the events of " + what, listener.Take(), expected);
}

inline Result SwitchOn(ISimpleMap& map)
{
    return map.SetBatchUpdatingMode(true);
}

inline Result SwitchOff(ISimpleMap& map)
{
    return map.SetBatchUpdatingMode(false);
}

}  // namespace tvx::check
