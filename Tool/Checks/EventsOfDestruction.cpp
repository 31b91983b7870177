// SPDX-License-Identifier: MIT
#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Check.h"
#include "Tool/Checks/LetteredHandlers.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

// When "Destroyed" comes, and what it leaves alone.
namespace
{

// Destroys a holder of the item's last reference; "Destroyed" must find the item in the expected state.
template <class Holder>
void ExpectContentAtDestroyed(Trial& trial, Ref<Holder>& holder, Ref<ProbeObject>& item, const bool& itemDied,
                              bool expected)
{
    bool diedBefore = false;
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { diedBefore = itemDied; };
    holder->SubscribeDestroyed(handler.Get(), 0);
    item = nullptr;
    trial.Expect(!itemDied, "the content to live as long as its holder", "its end");
    holder = nullptr;
    trial.Equal("the number of calls of \"Destroyed\"", handler->events.size(), std::size_t{1});
    trial.Equal("whether the content was released before \"Destroyed\"", diedBefore, expected);
    trial.Expect(itemDied, "the content to be released with its holder", "a reference left behind");
}

void VariantReleasesItsObjectFirst(Trial& trial)
{
    bool died = false;
    auto item = MakeRef<ProbeObject>(&died);
    auto variant = MakeObject(trial, item.Get());
    ExpectContentAtDestroyed(trial, variant, item, died, true);
}

void MapReleasesItsValuesFirst(Trial& trial)
{
    bool died = false;
    auto item = MakeRef<ProbeObject>(&died);
    auto map = MakeMap(trial);
    trial.Gives("SetValue", map->SetValue("key", item.Get()), TVX_OK);
    ExpectContentAtDestroyed(trial, map, item, died, true);
}

void CollectionReleasesItsItemsFirst(Trial& trial)
{
    bool died = false;
    auto item = MakeRef<ProbeObject>(&died);
    auto collection = MakeCollection(trial);
    trial.Gives("Add", collection->Add(item.Get()), TVX_OK);
    ExpectContentAtDestroyed(trial, collection, item, died, true);
}

void VariantArrayReleasesItsElementsFirst(Trial& trial)
{
    bool died = false;
    auto item = MakeRef<ProbeObject>(&died);
    auto array = MakeVariantArray(trial);
    trial.Gives("AppendObject", array->AppendObject(item.Get()), TVX_OK);
    ExpectContentAtDestroyed(trial, array, item, died, true);
}

void SettingsMapReleasesUserDataLast(Trial& trial)
{
    bool died = false;
    auto item = MakeRef<ProbeObject>(&died);
    auto map = MakeSimpleMap(trial);
    const auto attach = [&] { return trial.QueryAs<IUserDataContainer>(map, "a settings map"); };
    trial.Gives("SetUserData", attach()->SetUserData("name", item.Get()), TVX_OK);
    ExpectContentAtDestroyed(trial, map, item, died, false);
}

void SettingsMapHasOneListForAllFaces(Trial& trial)
{
    const auto handler = MakeRef<RecordingHandler>();
    auto map = MakeSimpleMap(trial);
    auto face = trial.QueryAs<IUserDataContainer>(map, "a settings map");
    face->SubscribeDestroyed(handler.Get(), 1);
    face->SubscribeDestroyed(handler.Get(), 2);
    map->UnsubscribeDestroyed(handler.Get());
    face = nullptr;
    map = nullptr;
    trial.Equal("the number of calls of \"Destroyed\"", handler->events.size(), std::size_t{1});
    trial.Equal("the user value of the call", handler->events[0].userData, 2u);
}

void SettingsMapKeepsTheOrder(Trial& trial)
{
    LetteredHandlers handlers;
    auto map = MakeSimpleMap(trial);
    for (const auto& handler : {handlers.b, handlers.a, handlers.c, handlers.b})
        map->SubscribeDestroyed(handler.Get(), 0);
    map = nullptr;
    trial.Equal("the order of the calls", handlers.TakeLog(), "BACB");
}

void SettingsMapIsItsOwnIdentity(Trial& trial)
{
    const auto handler = MakeRef<RecordingHandler>();
    auto first = MakeSimpleMap(trial);
    auto second = MakeSimpleMap(trial);
    for (const auto& map : {first, first, second})
        map->SubscribeDestroyed(handler.Get(), 0);
    first = nullptr;
    second = nullptr;
    const auto& events = handler->events;
    trial.Equal("the number of calls of \"Destroyed\"", events.size(), std::size_t{3});
    trial.Expect(events[0].sender != nullptr, "the sender to be an identity", "null");
    trial.Same("the sender of the second call", events[1].sender, events[0].sender);
    trial.Expect(events[2].sender != events[0].sender, "two objects to have two identities", "the same for both");
}

void SettingsMapIgnoresNull(Trial& trial)
{
    const auto handler = MakeRef<RecordingHandler>();
    auto map = MakeSimpleMap(trial);
    map->SubscribeDestroyed(nullptr, 1);
    map->SubscribeDestroyed(handler.Get(), 2);
    map = nullptr;
    trial.Equal("the number of calls of \"Destroyed\"", handler->events.size(), std::size_t{1});
}

void SettingsMapIgnoresStrangers(Trial& trial)
{
    const auto handler = MakeRef<RecordingHandler>();
    const auto stranger = MakeRef<RecordingHandler>();
    auto map = MakeSimpleMap(trial);
    map->UnsubscribeDestroyed(stranger.Get());
    map->SubscribeDestroyed(handler.Get(), 0);
    map->UnsubscribeDestroyed(stranger.Get());
    map = nullptr;
    trial.Equal("the number of calls of \"Destroyed\"", handler->events.size(), std::size_t{1});
}

constexpr Check VariantChecks[] = {
    {"event-variant-destroyed-after-release", "A variant with the last reference on an object dies.",
     "A variant releases its object before it tells of its end.", VariantReleasesItsObjectFirst},
};

constexpr Check MapChecks[] = {
    {"event-map-destroyed-after-release", "A map with the last reference on a value dies.",
     "A map releases its values before it tells of its end.", MapReleasesItsValuesFirst},
};

constexpr Check CollectionChecks[] = {
    {"event-collection-destroyed-after-release", "A collection with the last reference on an item dies.",
     "A collection releases its items before it tells of its end.", CollectionReleasesItsItemsFirst},
};

constexpr Check VariantArrayChecks[] = {
    {"event-variant-array-destroyed-after-release", "A variant array with the last reference on an object dies.",
     "A variant array releases its elements before it tells of its end.", VariantArrayReleasesItsElementsFirst},
};

constexpr Check SettingsMapChecks[] = {
    {"event-settings-map-destroyed-before-user-data", "A settings map with user data dies.",
     "The entries go first, then \"Destroyed\" is fired, and the user data is released last.",
     SettingsMapReleasesUserDataLast},
    {"event-settings-map-destroyed-one-list-for-all-faces",
     "A handler subscribes to \"Destroyed\" at one face of a settings map and unsubscribes at another.",
     "The faces of an object are one object with one list of subscriptions.", SettingsMapHasOneListForAllFaces},
    {"event-settings-map-destroyed-in-order", "Three handlers hear the end of a settings map.",
     "Handlers are called in the order in which they subscribed.", SettingsMapKeepsTheOrder},
    {"event-settings-map-destroyed-sender-is-identity", "Two settings maps die, one of them with two subscriptions.",
     "The sender of \"Destroyed\" is the same for all calls of an object, and not that of another object.",
     SettingsMapIsItsOwnIdentity},
    {"event-settings-map-destroyed-ignores-null", "A null handler is subscribed to \"Destroyed\".",
     "Subscribing a null handler does nothing.", SettingsMapIgnoresNull},
    {"event-settings-map-destroyed-ignores-strangers", "A handler that is not subscribed is unsubscribed.",
     "Unsubscribing a handler that is not subscribed does nothing.", SettingsMapIgnoresStrangers},
};

}  // namespace

extern const Family DestructionOfVariantFamily = {"events", VariantExport, Needs::Module, VariantChecks};
extern const Family DestructionOfMapFamily = {"events", MapExport, Needs::Module, MapChecks};
extern const Family DestructionOfSettingsMapFamily = {"events", SimpleMapExport, Needs::Module, SettingsMapChecks};
extern const Family DestructionOfCollectionFamily = {"events", CollectionExport, Needs::Module, CollectionChecks};
extern const Family DestructionOfVariantArrayFamily = {"events", VariantArrayExport, Needs::Module, VariantArrayChecks};

}  // namespace tvx::check
