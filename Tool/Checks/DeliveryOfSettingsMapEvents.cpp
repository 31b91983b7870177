// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/SettingsMapEvents.h"

namespace tvx::check
{

namespace
{

// A handler that answers every event with a failure.
class FailingHandler final : public ClassImpl<FailingHandler, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t, std::uint64_t) override
    {
        ++calls;
        return TVX_E_FAIL;
    }

    int calls = 0;
};

void Write(Trial& trial, ISimpleMap& map)
{
    trial.Gives("SetString", map.SetString("key", "value"), TVX_OK);
}

void ChangedCarriesItsNames(Trial& trial)
{
    constexpr std::uint64_t cookie = 0xFEDCBA9876543210u;
    const auto map = MakeImmediateSimpleMap(trial);
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), cookie, true);
    Write(trial, *map);
    trial.Equal("the number of events", handler->events.size(), std::size_t{1});
    const auto& event = handler->events[0];
    trial.Same("the sender", event.sender, static_cast<IObject*>(map.Get()));
    trial.Equal("the interface id", event.interfaceId, ISimpleMap5::Id);
    trial.Equal("the event name", event.eventName, "Changed");
    trial.Equal("the parameter", event.param, 0u);
    trial.Equal("the user value", event.userData, cookie);
}

void ModeChangedCarriesTheMode(Trial& trial)
{
    constexpr std::uint64_t cookie = 0x0123456789ABCDEFu;
    const auto map = MakeSimpleMap(trial);
    const auto handler = MakeRef<RecordingHandler>();
    std::vector<std::int32_t> types;
    handler->action = [&](const SeenEvent& event)
    {
        auto* const mode = reinterpret_cast<IVariant*>(static_cast<std::uintptr_t>(event.param));
        types.push_back(mode == nullptr ? 0 : mode->GetType());
    };
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), cookie, true);
    trial.Gives("SetBatchUpdatingMode(false)", SwitchOff(*map), TVX_OK);
    trial.Equal("the number of events", handler->events.size(), std::size_t{1});
    const auto& event = handler->events[0];
    trial.Same("the sender", event.sender, static_cast<IObject*>(map.Get()));
    trial.Equal("the interface id", event.interfaceId, ISimpleMap5::Id);
    trial.Equal("the event name", event.eventName, "BatchUpdatingModeChanged");
    trial.Equal("the types of the parameters", types, std::vector<std::int32_t>{IVariant::TypeBool});
    trial.Equal("the user value", event.userData, cookie);
}

void ReleasesTheModeObject(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    Ref<IVariant> kept;
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent& event)
    { kept = Ref<IVariant>(reinterpret_cast<IVariant*>(static_cast<std::uintptr_t>(event.param))); };
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    trial.Gives("SetBatchUpdatingMode(false)", SwitchOff(*map), TVX_OK);
    trial.Expect(static_cast<bool>(kept), "the event to carry a variant", "null");
    trial.Equal("the reference count of the variant after the event", kept->GetRefCount(), 1u);
}

void HandlersFindTheNewMode(Trial& trial)
{
    const auto map = MakeMapIn(trial, SettingsMapState::Dirty);
    Lines seen;
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent& event)
    {
        bool mode = true;
        map->GetBatchUpdatingMode(&mode);
        seen.push_back(event.eventName + (mode ? " in the mode" : " out of the mode"));
    };
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    map->SubscribeChanged(handler.Get(), 0, true);
    SwitchOff(*map);
    SwitchOn(*map);
    trial.Equal("the mode at each event", seen,
                (Lines{"BatchUpdatingModeChanged out of the mode", "Changed out of the mode",
                       "BatchUpdatingModeChanged in the mode"}));
}

void HandlersFindTheNewText(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    std::int32_t seen = 0;
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { map->GetInt("key", &seen); };
    map->SubscribeChanged(handler.Get(), 0, true);
    trial.Gives("SetInt", map->SetInt("key", 7), TVX_OK);
    trial.Equal("the value that the handler of \"Changed\" found", seen, 7);
}

void HoldsNobody(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    const auto handler = MakeRef<RecordingHandler>();
    std::uint32_t during = 0;
    handler->action = [&](const SeenEvent&) { during = handler->GetRefCount(); };
    map->SubscribeChanged(handler.Get(), 0, true);
    Write(trial, *map);
    trial.Equal("the handler's reference count during the event", during, 1u);
    trial.Equal("the handler's reference count", handler->GetRefCount(), 1u);
    trial.Equal("the map's reference count", map->GetRefCount(), 1u);
}

void IgnoresWhatHandlersAnswer(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    const auto failing = MakeRef<FailingHandler>();
    map->SubscribeChanged(failing.Get(), 0, true);
    SettingsMapListener listener(*map);
    Write(trial, *map);
    trial.Equal("the calls of the failing handler", failing->calls, 1);
    trial.Equal("the events of the next handler", listener.Take(), Lines{Changed});
}

void TellsOnlyItsOwnListeners(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    const auto other = MakeImmediateSimpleMap(trial);
    SettingsMapListener listener(*other);
    Write(trial, *map);
    trial.Equal("the events of the other map", listener.Take(), Lines());
}

constexpr Check Checks[] = {
    {"event-settings-map-changed-carries-its-names", "A handler looks at what comes along with \"Changed\".",
     "The sender is the map's primary face, the interface com.talvere.general.tvx.ISimpleMap/1.5, the parameter 0, and "
     "the user value the 64-bit cookie given when subscribing.",
     ChangedCarriesItsNames},
    {"event-settings-map-mode-changed-carries-the-mode", "A handler looks at \"BatchUpdatingModeChanged\".",
     "The sender is the map's primary face, the interface com.talvere.general.tvx.ISimpleMap/1.5, and the parameter a "
     "variant of type bool.",
     ModeChangedCarriesTheMode},
    {"event-settings-map-mode-object-is-released", "A handler keeps the variant of \"BatchUpdatingModeChanged\".",
     "The map releases the variant after the event.", ReleasesTheModeObject},
    {"event-settings-map-handlers-find-the-new-mode", "A handler asks the map for its mode at each event.",
     "The mode is set before any event of the switch.", HandlersFindTheNewMode},
    {"event-settings-map-handlers-find-the-new-text", "A handler of \"Changed\" reads the entry that was written.",
     "\"Changed\" comes after the write, before the operation returns.", HandlersFindTheNewText},
    {"event-settings-map-subscription-holds-nobody", "Reference counts of a map and its handler are read.",
     "Subscribing and firing keep neither the handler nor the map alive.", HoldsNobody},
    {"event-settings-map-ignores-answers-of-handlers", "A handler answers every event with -1.",
     "What a handler answers changes nothing: the next one is called, and the write gives 0.",
     IgnoresWhatHandlersAnswer},
    {"event-settings-map-tells-only-its-own-listeners", "Of two maps one is written to, the other one listened to.",
     "Subscriptions belong to one map.", TellsOnlyItsOwnListeners},
};

}  // namespace

extern const Family DeliveryOfSettingsMapFamily = {"events", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
