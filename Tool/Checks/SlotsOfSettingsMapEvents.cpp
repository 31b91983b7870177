// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotChecking.h"

#include <array>

namespace tvx::check
{

namespace
{

void SubscribeChanged(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    Need(trial, "SetBatchUpdatingMode", map->SetBatchUpdatingMode(false) == TVX_OK);
    CheckSubscribeSlot(trial, ToC<ISimpleMap>(map), &CallISimpleMapSubscribeChanged, "Changed",
                       [&] { return map->SetString("key", "text") == TVX_OK; });
}

void SubscribeBatchUpdatingModeChanged(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    bool mode = true;
    CheckSubscribeSlot(trial, ToC<ISimpleMap>(map), &CallISimpleMapSubscribeBatchUpdatingModeChanged,
                       "BatchUpdatingModeChanged",
                       [&]
                       {
                           mode = !mode;
                           return map->SetBatchUpdatingMode(mode) == TVX_OK;
                       });
}

void SetBatchUpdatingMode(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    for (const bool mode : {false, true})
    {
        bool came = !mode;
        trial.Gives("SetBatchUpdatingMode", CallISimpleMapSetBatchUpdatingMode(ToC<ISimpleMap>(map), mode), TVX_OK);
        Need(trial, "GetBatchUpdatingMode", map->GetBatchUpdatingMode(&came) == TVX_OK);
        trial.Equal("the mode after slot 26", came, mode);
    }
}

void GetBatchUpdatingMode(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    for (const bool mode : {true, false})
    {
        RoomyOut<bool> numbered{!mode};
        bool named = !mode;
        trial.Gives("GetBatchUpdatingMode by its number",
                    CallISimpleMapGetBatchUpdatingMode(ToC<ISimpleMap>(map), &numbered.value), TVX_OK);
        trial.Gives("GetBatchUpdatingMode by its name", map->GetBatchUpdatingMode(&named), TVX_OK);
        trial.Equal("the mode by slot 27", numbered.value, mode);
        trial.Equal("the mode by its name", named, mode);
        Need(trial, "SetBatchUpdatingMode", map->SetBatchUpdatingMode(!mode) == TVX_OK);
    }
}

using SubscribeByName = void (ISimpleMap::*)(IEventHandler* handler, std::uint64_t cookie, bool connect);

void CheckFire(Trial& trial, FireSlot fire, void* argument, const char* event, SubscribeByName subscribe)
{
    const auto map = MakeSimpleMap(trial);
    const auto handler = MakeRef<RecordingHandler>();
    (map.Get()->*subscribe)(handler.Get(), 0, true);
    Need(trial, "subscribing", handler->events.empty());
    CheckFireSlot(trial, ToC<ISimpleMap>(map), fire, argument, event, *handler);
}

void FireChanged(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    for (void* const argument : {ToC<IObjectBase>(object), static_cast<void*>(nullptr)})
        CheckFire(trial, &CallSimpleMapFireChanged, argument, "Changed", &ISimpleMap::SubscribeChanged);
}

void FireBatchUpdatingModeChanged(Trial& trial)
{
    const auto mode = MakeRef<FixedVariant>(1);
    CheckFire(trial, &CallSimpleMapFireBatchUpdatingModeChanged, ToC<IVariant>(mode), "BatchUpdatingModeChanged",
              &ISimpleMap::SubscribeBatchUpdatingModeChanged);
}

void AreTheSameInEveryVersion(Trial& trial)
{
    const std::array ids = {ISimpleMap::Id,  ISimpleMap1::Id, ISimpleMap2::Id,
                            ISimpleMap3::Id, ISimpleMap4::Id, ISimpleMap5::Id};
    const auto map = MakeSimpleMap(trial);
    Texts expected;
    for (const char* const id : ids)
    {
        const auto face = TakeFromC<ISimpleMap>(trial, std::string("the query for ") + id, TVX_OK,
                                                [&](void** out) { return map->QueryInterface(id, out); });
        trial.Same(std::string("the face for ") + id, face.Get(), map.Get());
        trial.Gives("SetInt", CallISimpleMapSetInt(ToC<ISimpleMap>(face), id, 5), TVX_OK);
        expected.insert(expected.end(), {id, "5"});
    }
    ExpectEntries(trial, map, "a write through each version", expected);
}

constexpr Check Checks[] = {
    {"slot-settings-map-25-subscribe-changed", "SubscribeChanged is called by its number.",
     "Slot 25 of ISimpleMap is SubscribeChanged: it subscribes and unsubscribes one handler for \"Changed\".",
     SubscribeChanged},
    {"slot-settings-map-26-set-batch-updating-mode", "SetBatchUpdatingMode is called by its number.",
     "Slot 26 of ISimpleMap is SetBatchUpdatingMode: it switches the mode.", SetBatchUpdatingMode},
    {"slot-settings-map-27-get-batch-updating-mode", "GetBatchUpdatingMode is called by its number.",
     "Slot 27 of ISimpleMap is GetBatchUpdatingMode: it tells the mode, in which a new map is.", GetBatchUpdatingMode},
    {"slot-settings-map-28-subscribe-batch-updating-mode-changed",
     "SubscribeBatchUpdatingModeChanged is called by its number.",
     "Slot 28 of ISimpleMap is SubscribeBatchUpdatingModeChanged: it subscribes and unsubscribes one handler for "
     "\"BatchUpdatingModeChanged\".",
     SubscribeBatchUpdatingModeChanged},
    {"slot-settings-map-29-fire-changed", "FireChanged, behind the interface, is called by its number.",
     "Slot 29 of a settings map is FireChanged: it fires \"Changed\" with its argument.", FireChanged},
    {"slot-settings-map-30-fire-batch-updating-mode-changed",
     "FireBatchUpdatingModeChanged, behind the interface, is called by its number.",
     "Slot 30 of a settings map is FireBatchUpdatingModeChanged: it fires \"BatchUpdatingModeChanged\" with its "
     "argument.",
     FireBatchUpdatingModeChanged},
    {"slot-settings-map-12-in-every-version", "The same slot is called through each version of the interface.",
     "ISimpleMap and ISimpleMap1 to ISimpleMap5 are one table at one address: a host asks for the version that it "
     "knows.",
     AreTheSameInEveryVersion},
};

}  // namespace

extern const Family SlotsOfSettingsMapEventFamily = {"slots", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
