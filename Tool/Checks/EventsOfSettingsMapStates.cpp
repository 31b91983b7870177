// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/SettingsMapEvents.h"

namespace tvx::check
{

namespace
{

void TellsTheSwitchOn(Trial& trial)
{
    ExpectEvents(trial, SettingsMapState::Immediate, "switching the mode on", {SwitchedOn}, SwitchOn);
}

void TellsTheSwitchOffAlone(Trial& trial)
{
    ExpectEvents(trial, SettingsMapState::Clean, "switching the mode off without a write", {SwitchedOff}, SwitchOff);
}

void TellsTheSwitchOffThenTheChange(Trial& trial)
{
    ExpectEvents(trial, SettingsMapState::Dirty, "switching the mode off after a write", {SwitchedOff, Changed},
                 SwitchOff);
}

void TellsManyWritesOnce(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    SettingsMapListener listener(*map);
    for (const auto* const key : {"a", "b", "c"})
        trial.Gives("SetString", map->SetString(key, "value"), TVX_OK);
    trial.Equal("the events of three writes into a new map", listener.Take(), Lines());
    trial.Gives("switching the mode off", SwitchOff(*map), TVX_OK);
    trial.Equal("the events of switching the mode off", listener.Take(), (Lines{SwitchedOff, Changed}));
}

void TellsAChangeOnlyOnce(Trial& trial)
{
    const auto map = MakeMapIn(trial, SettingsMapState::Dirty);
    SwitchOff(*map);
    SettingsMapListener listener(*map);
    SwitchOn(*map);
    SwitchOff(*map);
    trial.Equal("the events after the change was told", listener.Take(), (Lines{SwitchedOn, SwitchedOff}));
}

void IsSilentWhenTheModeStays(Trial& trial)
{
    ExpectEvents(trial, SettingsMapState::Immediate, "switching off what is off", {}, SwitchOff);
    ExpectEvents(trial, SettingsMapState::Clean, "switching on what is on", {}, SwitchOn);
    ExpectEvents(trial, SettingsMapState::Dirty, "switching on what is on", {}, SwitchOn);
}

void KeepsAPendingChangeOverARepeatedSwitch(Trial& trial)
{
    ExpectEvents(trial, SettingsMapState::Dirty, "switching on, which it is, then off", {SwitchedOff, Changed},
                 [](ISimpleMap& map)
                 {
                     SwitchOn(map);
                     return SwitchOff(map);
                 });
}

// The states and their transitions, once more as a model to compare with.
struct Model
{
    Lines Write()
    {
        pending = batch;
        return batch ? Lines() : Lines{Changed};
    }

    Lines Switch(bool mode)
    {
        if (mode == batch)
            return {};
        batch = mode;
        Lines told{mode ? SwitchedOn : SwitchedOff};
        if (!mode && std::exchange(pending, false))
            told.emplace_back(Changed);
        return told;
    }

    bool batch = true;
    bool pending = false;
};

void FollowsTheStatesForLong(Trial& trial)
{
    constexpr int steps = 300;
    const auto map = MakeSimpleMap(trial);
    SettingsMapListener listener(*map);
    Model model;
    for (int step = 0; step < steps; ++step)
    {
        const bool writes = trial.GetRandom().Toss();
        const bool mode = trial.GetRandom().Toss();
        const auto expected = writes ? model.Write() : model.Switch(mode);
        const auto result = writes ? map->SetInt("key", step) : map->SetBatchUpdatingMode(mode);
        const auto what = (writes ? "write" : mode ? "switch on" : "switch off") + (" at step " + std::to_string(step));
        trial.Gives("a " + what, result, TVX_OK);
        trial.Equal("the events of a " + what, listener.Take(), expected);
    }
}

constexpr Check Checks[] = {
    {"event-settings-map-switch-on-fires-mode-only", "Batch updating mode is switched on.",
     "Switching the mode on fires \"BatchUpdatingModeChanged\" with true, and nothing else.", TellsTheSwitchOn},
    {"event-settings-map-switch-off-clean-fires-mode-only", "The mode is switched off when nothing was written.",
     "Switching the mode off fires \"BatchUpdatingModeChanged\" with false; without a write there is no \"Changed\".",
     TellsTheSwitchOffAlone},
    {"event-settings-map-switch-off-dirty-fires-mode-then-changed", "The mode is switched off after a write.",
     "A write that was held back is told by \"Changed\" after \"BatchUpdatingModeChanged\" with false.",
     TellsTheSwitchOffThenTheChange},
    {"event-settings-map-tells-many-writes-once", "A new map gets three entries, then leaves batch updating mode.",
     "A new map is in batch updating mode, and any number of writes in it is told by one \"Changed\".",
     TellsManyWritesOnce},
    {"event-settings-map-tells-a-change-only-once", "After the change was told, the mode goes on and off again.",
     "A change that was told is no longer pending.", TellsAChangeOnlyOnce},
    {"event-settings-map-repeated-switch-is-silent", "The mode is set to what it is, in each state of a map.",
     "Setting the mode that a map is in gives 0 and fires nothing.", IsSilentWhenTheModeStays},
    {"event-settings-map-repeated-switch-keeps-pending-change", "A map with a write to tell is switched on again.",
     "Setting the mode that a map is in does not lose the change that is still to be told.",
     KeepsAPendingChangeOverARepeatedSwitch},
    {"event-settings-map-follows-its-states-for-long", "Some hundred writes and switches in a random order.",
     "The events follow from the mode and from whether a write is still to be told, and from nothing else.",
     FollowsTheStatesForLong},
};

}  // namespace

extern const Family EventsOfSettingsMapStateFamily = {"events", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
