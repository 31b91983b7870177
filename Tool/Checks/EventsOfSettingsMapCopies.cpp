// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/SettingsMapEvents.h"

namespace tvx::check
{

namespace
{

// What the switch out of batch updating mode tells shows the state that a map is in.
void ExpectState(Trial& trial, const std::string& what, ISimpleMap& map, const Lines& expected)
{
    SettingsMapListener listener(map);
    trial.Gives("SetBatchUpdatingMode(false) of " + what, SwitchOff(map), TVX_OK);
    trial.Equal("the events when batch updating mode of " + what + " is switched off", listener.Take(), expected);
}

// SetSubMap with a source of so many entries on a map in a state, and what it tells.
void ExpectSetSubMap(Trial& trial, SettingsMapState state, int entries, const Lines& expected)
{
    const auto source = MakeSimpleMap(trial);
    for (int entry = 0; entry < entries; ++entry)
        trial.Gives("SetInt", source->SetInt(std::to_string(entry).c_str(), entry), TVX_OK);
    ExpectEvents(trial, state, "SetSubMap of " + std::to_string(entries) + " entries", expected,
                 [&](ISimpleMap& map) { return map.SetSubMap("path", source.Get()); });
}

void SetSubMapTellsTheSwitchesThenOneChange(Trial& trial)
{
    ExpectSetSubMap(trial, SettingsMapState::Immediate, 3, {SwitchedOn, SwitchedOff, Changed});
}

void SetSubMapOfNothingTellsTheSwitches(Trial& trial)
{
    ExpectSetSubMap(trial, SettingsMapState::Immediate, 0, {SwitchedOn, SwitchedOff});
}

void SetSubMapIsSilentInBatchMode(Trial& trial)
{
    for (const auto state : {SettingsMapState::Clean, SettingsMapState::Dirty})
    {
        ExpectSetSubMap(trial, state, 3, {});
        ExpectSetSubMap(trial, state, 0, {});
    }
}

void SetSubMapLeavesAChangeToTell(Trial& trial)
{
    const auto source = MakeMapIn(trial, SettingsMapState::Dirty);
    const auto map = MakeSimpleMap(trial);
    trial.Gives("SetSubMap", map->SetSubMap("path", source.Get()), TVX_OK);
    ExpectState(trial, "the target of SetSubMap", *map, {SwitchedOff, Changed});
}

void SetSubMapOfNothingLeavesNothingToTell(Trial& trial)
{
    const auto source = MakeSimpleMap(trial);
    const auto map = MakeSimpleMap(trial);
    trial.Gives("SetSubMap", map->SetSubMap("path", source.Get()), TVX_OK);
    ExpectState(trial, "the target of SetSubMap", *map, {SwitchedOff});
}

void SetSubMapLeavesTheSourceAlone(Trial& trial)
{
    const auto source = MakeMapIn(trial, SettingsMapState::Dirty);
    SettingsMapListener listener(*source);
    const auto map = MakeImmediateSimpleMap(trial);
    trial.Gives("SetSubMap", map->SetSubMap("path", source.Get()), TVX_OK);
    trial.Equal("the events of the source of SetSubMap", listener.Take(), Lines());
}

void SetSubMapHasWrittenAllWhenItTells(Trial& trial)
{
    const auto source = MakeSimpleMap(trial);
    for (const auto* const key : {"a", "b"})
        trial.Gives("SetString", source->SetString(key, "value"), TVX_OK);
    const auto map = MakeImmediateSimpleMap(trial);
    int seen = 0;
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&)
    {
        for (const auto* const key : {"path\\a", "path\\b"})
        {
            bool present = false;
            map->HasKey(key, &present);
            seen += present ? 1 : 0;
        }
    };
    map->SubscribeChanged(handler.Get(), 0, true);
    trial.Gives("SetSubMap", map->SetSubMap("path", source.Get()), TVX_OK);
    trial.Equal("the number of \"Changed\"", handler->events.size(), std::size_t{1});
    trial.Equal("the written entries that its handler saw", seen, 2);
}

// GetSubMap of the path on a map with an entry below "full", and the state of what came.
void ExpectSubMapState(Trial& trial, const char* path, Result expected, const Lines& told)
{
    const auto map = MakeImmediateSimpleMap(trial);
    trial.Gives("SetString", map->SetString("full\\key", "value"), TVX_OK);
    SettingsMapListener listener(*map);
    Ref<ISimpleMap> below;
    trial.Gives("GetSubMap", map->GetSubMap(path, below.Receive()), expected);
    trial.Expect(static_cast<bool>(below), "GetSubMap to give a map", "null");
    trial.Equal("the events of the map that was asked", listener.Take(), Lines());
    ExpectState(trial, "what GetSubMap gave", *below, told);
}

void GetSubMapGivesAChangeToTell(Trial& trial)
{
    ExpectSubMapState(trial, "full", TVX_S_VALUE, {SwitchedOff, Changed});
}

void GetSubMapOfNothingGivesNothingToTell(Trial& trial)
{
    ExpectSubMapState(trial, "empty", TVX_S_NOKEY, {SwitchedOff});
}

Ref<ISimpleMap> CloneIn(Trial& trial, SettingsMapState state)
{
    const auto map = MakeMapIn(trial, state);
    return Make<ISimpleMap>(trial, "Clone", [&](ISimpleMap** out) { return map->Clone(out); });
}

void CloneIsInTheSameState(Trial& trial)
{
    ExpectState(trial, "a clone", *CloneIn(trial, SettingsMapState::Immediate), {});
    ExpectState(trial, "a clone", *CloneIn(trial, SettingsMapState::Clean), {SwitchedOff});
    ExpectState(trial, "a clone", *CloneIn(trial, SettingsMapState::Dirty), {SwitchedOff, Changed});
}

void CloneLeavesTheSourceAlone(Trial& trial)
{
    const auto map = MakeMapIn(trial, SettingsMapState::Dirty);
    SettingsMapListener listener(*map);
    Ref<ISimpleMap> clone;
    trial.Gives("Clone", map->Clone(clone.Receive()), TVX_OK);
    trial.Expect(static_cast<bool>(clone), "Clone to give a map", "null");
    trial.Gives("SetBatchUpdatingMode(false) of the clone", SwitchOff(*clone), TVX_OK);
    trial.Gives("SetString of the clone", clone->SetString("key", "value"), TVX_OK);
    trial.Equal("the events that a listener of the source had from the clone", listener.Take(), Lines());
    trial.Gives("SetBatchUpdatingMode(false) of the source", SwitchOff(*map), TVX_OK);
    trial.Equal("the events of the source", listener.Take(), (Lines{SwitchedOff, Changed}));
}

constexpr Check Checks[] = {
    {"event-settings-map-set-sub-map-tells-once", "SetSubMap writes three entries into a map out of batch mode.",
     "SetSubMap writes in batch updating mode: listeners hear it go on and off, then one \"Changed\".",
     SetSubMapTellsTheSwitchesThenOneChange},
    {"event-settings-map-set-sub-map-of-nothing", "SetSubMap of an empty map on a map out of batch mode.",
     "The mode goes on and off, but without a write there is no \"Changed\".", SetSubMapOfNothingTellsTheSwitches},
    {"event-settings-map-set-sub-map-silent-in-batch-mode", "SetSubMap on a map in batch updating mode.",
     "In batch updating mode nothing fires, and the mode stays on.", SetSubMapIsSilentInBatchMode},
    {"event-settings-map-set-sub-map-is-pending-in-batch-mode", "After SetSubMap the mode is switched off.",
     "What SetSubMap wrote in batch updating mode is told by \"Changed\" when the mode goes off.",
     SetSubMapLeavesAChangeToTell},
    {"event-settings-map-set-sub-map-of-nothing-is-not-pending", "After SetSubMap of an empty map the mode goes off.",
     "Only a write is a change.", SetSubMapOfNothingLeavesNothingToTell},
    {"event-settings-map-set-sub-map-leaves-source-alone", "A listener hears the source of SetSubMap.",
     "Nothing fires on the map that is only read.", SetSubMapLeavesTheSourceAlone},
    {"event-settings-map-set-sub-map-tells-when-all-is-written", "A handler of \"Changed\" reads the written entries.",
     "\"Changed\" comes when every entry is in its place.", SetSubMapHasWrittenAllWhenItTells},
    {"event-settings-map-sub-map-has-pending-change", "What GetSubMap gave leaves batch updating mode.",
     "The result of GetSubMap is in batch updating mode, and its entries are a change that is still to be told.",
     GetSubMapGivesAChangeToTell},
    {"event-settings-map-empty-sub-map-has-no-pending-change", "An empty result of GetSubMap leaves batch mode.",
     "The result of GetSubMap is in batch updating mode; without entries there is nothing to tell.",
     GetSubMapOfNothingGivesNothingToTell},
    {"event-settings-map-clone-is-in-same-state", "Clones of maps in each state are switched out of batch mode.",
     "A clone takes over the mode and whether a change is still to be told.", CloneIsInTheSameState},
    {"event-settings-map-clone-leaves-source-alone", "A clone of a map with a listener is switched and written.",
     "A clone has no subscriptions, and telling its change leaves that of the source to be told.",
     CloneLeavesTheSourceAlone},
};

}  // namespace

extern const Family EventsOfSettingsMapCopyFamily = {"events", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
