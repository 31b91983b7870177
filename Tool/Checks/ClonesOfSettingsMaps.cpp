// SPDX-License-Identifier: MIT
#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/SettingsMaps.h"

namespace tvx::check
{

namespace
{

Ref<ISimpleMap> Clone(Trial& trial, const Ref<ISimpleMap5>& map)
{
    return Make<ISimpleMap>(trial, "Clone", [&](ISimpleMap** out) { return map->Clone(out); });
}

void HaveTheSameEntries(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"b", "2"}, {"", "0"}, {"a\\x", "1"}});
    ExpectEntries(trial, "a clone", *Clone(trial, map), {"=0", "a\\x=1", "b=2"});
    ExpectEntries(trial, "a map that was cloned", *map, {"=0", "a\\x=1", "b=2"});
    ExpectEntries(trial, "a clone of an empty map", *Clone(trial, MakeSimpleMap(trial)), {});
}

void AreIndependent(Trial& trial)
{
    auto map = MakeFilledMap(trial, {{"a", "1"}, {"b", "2"}});
    const auto clone = Clone(trial, map);
    Fill(trial, *clone, {{"a", "changed"}, {"c", "new"}});
    ExpectEntries(trial, "a map whose clone was written", *map, {"a=1", "b=2"});
    Fill(trial, *map, {{"b", "changed"}, {"d", "new"}});
    map = nullptr;
    ExpectEntries(trial, "a clone whose source was written and released", *clone, {"a=changed", "b=2", "c=new"});
}

void BelongToTheirCaller(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a", "1"}});
    const auto clone = Clone(trial, map);
    trial.Expect(clone.Get() != static_cast<ISimpleMap*>(map.Get()), "Clone to give a new map", "the map itself");
    trial.Equal("the reference count of a clone", clone->GetRefCount(), 1u);
    trial.Equal("the reference count of the map that was cloned", map->GetRefCount(), 1u);
}

template <class... Versions>
void ExpectOneFace(Trial& trial, const Ref<ISimpleMap>& clone)
{
    (trial.Same("a clone, asked for " + Show(Versions::Id) + ",", trial.QueryAs<Versions>(clone, "a clone").Get(),
                clone.Get()),
     ...);
}

void AnswerEveryVersion(Trial& trial)
{
    const auto clone = Clone(trial, MakeSimpleMap(trial));
    ExpectOneFace<ISimpleMap, ISimpleMap1, ISimpleMap2, ISimpleMap3, ISimpleMap4, ISimpleMap5>(trial, clone);
}

void HaveTheSameMode(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    for (const bool mode : {true, false, true})
    {
        trial.Gives("SetBatchUpdatingMode", map->SetBatchUpdatingMode(mode), TVX_OK);
        trial.Equal("the batch updating mode of a clone", IsBatchUpdating(trial, *Clone(trial, map)), mode);
        trial.Equal("the batch updating mode of a map that was cloned", IsBatchUpdating(trial, *map), mode);
    }
}

// What a clone tells when it leaves batch updating mode: as many changes as were pending in its source.
void ExpectPendingChanges(Trial& trial, const std::string& what, const Ref<ISimpleMap5>& map, const Texts& expected)
{
    const auto handler = MakeRef<RecordingHandler>();
    const auto clone = Clone(trial, map);
    clone->SubscribeChanged(handler.Get(), 0, true);
    trial.Gives("SetBatchUpdatingMode(false) of a clone", clone->SetBatchUpdatingMode(false), TVX_OK);
    trial.Equal("what " + what + " tells on leaving batch updating mode", handler->GetNames(), expected);
}

void HaveTheSamePendingChange(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    ExpectPendingChanges(trial, "the clone of an unwritten map", map, {});
    Fill(trial, *map, {{"a", "1"}, {"b", "2"}});
    ExpectPendingChanges(trial, "the clone of a map written in batch updating mode", map, {"Changed"});
    trial.Gives("SetBatchUpdatingMode(false)", map->SetBatchUpdatingMode(false), TVX_OK);
    trial.Gives("SetBatchUpdatingMode(true)", map->SetBatchUpdatingMode(true), TVX_OK);
    ExpectPendingChanges(trial, "the clone of a map whose change was told", map, {});
}

void HaveNoSubscriptions(Trial& trial)
{
    const auto handler = MakeRef<RecordingHandler>();
    const auto map = MakeImmediateSimpleMap(trial);
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    const auto clone = Clone(trial, map);
    Fill(trial, *clone, {{"a", "1"}});
    trial.Gives("SetBatchUpdatingMode(true) of a clone", clone->SetBatchUpdatingMode(true), TVX_OK);
    trial.Equal("what subscribers of a map hear of its clone", handler->GetNames(), Texts{});
    Fill(trial, *map, {{"a", "1"}});
    trial.Equal("what subscribers of a map hear of itself", handler->GetNames(), Texts{"Changed"});
}

void HaveNoUserData(Trial& trial)
{
    const auto data = MakeRef<ProbeObject>();
    const auto map = MakeSimpleMap(trial);
    const auto named = trial.QueryAs<IUserDataContainer>(map, "a map");
    trial.Gives("SetUserData", named->SetUserData("name", data.Get()), TVX_OK);
    const auto clone = Clone(trial, map);
    Ref<IObjectBase> out;
    trial.Gives("GetUserData of a clone",
                trial.QueryAs<IUserDataContainer>(clone, "a clone")->GetUserData("name", out.Receive()), TVX_S_NOKEY);
    trial.Equal("the reference count of the data of a map that was cloned", data->GetRefCount(), 2u);
}

constexpr Check Checks[] = {
    {"value-settings-map-clone-has-the-same-entries", "A map is cloned, and an empty one.",
     "A clone has the keys and values of its source, which stays as it is.", HaveTheSameEntries},
    {"value-settings-map-clone-is-independent", "A clone and its source are written, and the source is released.",
     "A clone is a copy: what happens to one map afterwards does not show in the other.", AreIndependent},
    {"value-settings-map-clone-belongs-to-its-caller", "The reference counts of a clone and its source are asked for.",
     "A clone is a new map with one reference, which the caller owns; it holds none on its source.",
     BelongToTheirCaller},
    {"value-settings-map-clone-answers-every-version", "A clone is asked for ISimpleMap/1.0 to 1.5.",
     "A clone is a full settings map, whose versions all share one face.", AnswerEveryVersion},
    {"value-settings-map-clone-has-the-same-mode", "Maps in and out of batch updating mode are cloned.",
     "A clone has the batch updating mode of its source, unlike a new map.", HaveTheSameMode},
    {"value-settings-map-clone-has-the-same-pending-change", "Maps with and without an untold change are cloned.",
     "Whether a change is still to be told is copied, so that a clone tells it once when it leaves the mode.",
     HaveTheSamePendingChange},
    {"value-settings-map-clone-has-no-subscriptions", "A map with subscribers is cloned and the clone is written.",
     "Subscriptions belong to the one map: cloning tells nothing, and its subscribers hear nothing of the clone.",
     HaveNoSubscriptions},
    {"value-settings-map-clone-has-no-user-data", "A map with user data is cloned.",
     "User data belongs to the one map and is not copied.", HaveNoUserData},
};

}  // namespace

extern const Family ClonesOfSettingsMapFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
