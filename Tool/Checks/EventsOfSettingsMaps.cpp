// SPDX-License-Identifier: MIT
#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/SettingsMapEvents.h"

namespace tvx::check
{

namespace
{

void TellsEachWriteAtOnce(Trial& trial)
{
    const auto write = [](Result (*step)(ISimpleMap&)) { return step; };
    ExpectEvents(trial, SettingsMapState::Immediate, "SetString", {Changed},
                 write([](ISimpleMap& map) { return map.SetString("key", "value"); }));
    ExpectEvents(trial, SettingsMapState::Immediate, "SetInt", {Changed},
                 write([](ISimpleMap& map) { return map.SetInt("key", 7); }));
    ExpectEvents(trial, SettingsMapState::Immediate, "SetDouble", {Changed},
                 write([](ISimpleMap& map) { return map.SetDouble("key", 0.5); }));
}

void TellsAWriteOfTheSameText(Trial& trial)
{
    ExpectEvents(trial, SettingsMapState::Immediate, "writing the same text twice", {Changed, Changed},
                 [](ISimpleMap& map)
                 {
                     map.SetString("key", "same");
                     return map.SetString("key", "same");
                 });
}

void HoldsWritesBack(Trial& trial)
{
    for (const auto state : {SettingsMapState::Clean, SettingsMapState::Dirty})
        ExpectEvents(trial, state, "a write in batch updating mode", {},
                     [](ISimpleMap& map) { return map.SetString("key", "value"); });
}

void TellsNothingOfReading(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    trial.Gives("SetString", map->SetString("key", "1"), TVX_OK);
    SettingsMapListener listener(*map);
    std::int32_t number = 0;
    bool present = false;
    Ref<IString> text;
    Ref<ISimpleMap> other;
    Ref<ISimpleMapIterator> iterator;
    trial.Gives("GetInt", map->GetInt("key", &number), TVX_OK);
    trial.Gives("GetString", map->GetString("key", text.Receive()), TVX_S_VALUE);
    trial.Gives("HasKey", map->HasKey("key", &present), TVX_OK);
    trial.Gives("GetIterator", map->GetIterator(iterator.Receive()), TVX_OK);
    trial.Gives("GetSubMap", map->GetSubMap("key", other.Receive()), TVX_S_NOKEY);
    trial.Gives("Clone", map->Clone(other.Receive()), TVX_OK);
    trial.Equal("the events of reading", listener.Take(), Lines());
}

void TellsNothingOfAFailedWrite(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    SettingsMapListener listener(*map);
    trial.Reports("SetString of a null key", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                  [&] { return map->SetString(nullptr, "value"); });
    trial.Gives("SetString of a null value", map->SetString("key", nullptr), TVX_E_POINTER);
    trial.Equal("the events of failed writes", listener.Take(), Lines());
}

void TellsNothingOfUserData(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    SettingsMapListener listener(*map);
    const auto container = trial.QueryAs<IUserDataContainer>(map, "a settings map");
    const auto object = MakeRef<ProbeObject>();
    trial.Gives("SetUserData", container->SetUserData("name", object.Get()), TVX_OK);
    trial.Gives("ClearUserData", container->ClearUserData(), TVX_OK);
    trial.Equal("the events of attaching user data", listener.Take(), Lines());
}

constexpr Check Checks[] = {
    {"event-settings-map-tells-each-write-at-once", "SetString, SetInt and SetDouble write out of batch updating mode.",
     "Out of batch updating mode each write fires one \"Changed\" before it returns.", TellsEachWriteAtOnce},
    {"event-settings-map-tells-a-write-of-the-same-text", "The same text is written twice under one key.",
     "Every write counts as a change, also one that leaves the text as it was.", TellsAWriteOfTheSameText},
    {"event-settings-map-holds-writes-back-in-batch-mode", "A map in batch updating mode is written to.",
     "In batch updating mode a write fires nothing.", HoldsWritesBack},
    {"event-settings-map-reading-is-silent", "A map is read, cloned and iterated.", "Reading fires no event.",
     TellsNothingOfReading},
    {"event-settings-map-failed-write-is-silent", "SetString is called with a null key and with a null value.",
     "A write that fails is no change and fires nothing.", TellsNothingOfAFailedWrite},
    {"event-settings-map-user-data-is-silent", "User data is attached to a map and removed.",
     "Attached objects are no entries: they raise no \"Changed\".", TellsNothingOfUserData},
};

}  // namespace

extern const Family EventsOfSettingsMapFamily = {"events", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
