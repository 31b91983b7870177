// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/ForwardingMap.h"
#include "Tool/Checks/SettingsMaps.h"

namespace tvx::check
{

namespace
{

void SetSubMap(Trial& trial, const Ref<ISimpleMap5>& map, const char* path, const Ref<ISimpleMap>& source)
{
    trial.Gives("SetSubMap of " + Show(std::string_view(path)), map->SetSubMap(path, source.Get()), TVX_OK);
}

void IsWrittenBelowItsPath(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    SetSubMap(trial, map, "p", MakeFilledMap(trial, {{"x", "1"}, {"y\\z", "2"}, {"\\w", "3"}}));
    ExpectEntries(trial, "a map with a sub-map", *map, {"p\\\\w=3", "p\\x=1", "p\\y\\z=2"});
}

void IsWrittenUnchangedForTheEmptyPath(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    SetSubMap(trial, map, "", MakeFilledMap(trial, {{"", "0"}, {"\\a", "1"}, {"b\\c", "2"}}));
    ExpectEntries(trial, "a map with a sub-map of the empty path", *map, {"=0", "\\a=1", "b\\c=2"});
}

void WritesAnEmptyKey(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    SetSubMap(trial, map, "p", MakeFilledMap(trial, {{"", "0"}}));
    ExpectEntries(trial, "a map with a sub-map of the empty key", *map, {"p\\=0"});
}

void TakesThePathAsItIs(Trial& trial)
{
    const auto source = MakeFilledMap(trial, {{"x", "1"}});
    const auto map = MakeSimpleMap(trial);
    for (const char* const path : {"a\\b", "c\\", "\\d", "e/f", " "})
        SetSubMap(trial, map, path, source);
    ExpectEntries(trial, "a map with sub-maps of several paths", *map,
                  {" \\x=1", "\\d\\x=1", "a\\b\\x=1", "c\\\\x=1", "e/f\\x=1"});
}

void LeavesOtherEntries(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"p", "0"}, {"p\\old", "1"}, {"p\\x", "2"}, {"x", "3"}});
    SetSubMap(trial, map, "p", MakeFilledMap(trial, {{"new", "4"}, {"x", "changed"}}));
    ExpectEntries(trial, "a map with entries below and beside a written sub-map", *map,
                  {"p=0", "p\\new=4", "p\\old=1", "p\\x=changed", "x=3"});
}

void MayBeEmpty(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"p\\x", "1"}});
    SetSubMap(trial, map, "p", MakeSimpleMap(trial));
    ExpectEntries(trial, "a map with an empty sub-map", *map, {"p\\x=1"});
}

void LeavesItsSource(Trial& trial)
{
    const auto source = MakeFilledMap(trial, {{"x", "1"}});
    const auto map = MakeSimpleMap(trial);
    SetSubMap(trial, map, "p", source);
    trial.Equal("the reference count of the source of a sub-map", source->GetRefCount(), 1u);
    Fill(trial, *map, {{"p\\x", "changed"}});
    ExpectEntries(trial, "the source of a sub-map that was written over", *source, {"x=1"});
    Fill(trial, *source, {{"x", "source"}});
    ExpectEntries(trial, "a map whose source was written over", *map, {"p\\x=changed"});
}

void MayBeTheMapItself(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a", "1"}, {"p\\a", "old"}, {"z", "3"}});
    SetSubMap(trial, map, "p", map);
    ExpectEntries(trial, "a map written below a path of its own", *map,
                  {"a=1", "p\\a=1", "p\\p\\a=old", "p\\z=3", "z=3"});
    SetSubMap(trial, map, "", map);
    ExpectEntries(trial, "a map written into itself", *map, {"a=1", "p\\a=1", "p\\p\\a=old", "p\\z=3", "z=3"});
    trial.Equal("the reference count of a map written into itself", map->GetRefCount(), 1u);
}

void MayBeOfAnotherClass(Trial& trial)
{
    const auto source = MakeRef<ForwardingMap>(MakeFilledMap(trial, {{"x", "1"}, {"y\\z", "2"}}));
    const auto map = MakeSimpleMap(trial);
    SetSubMap(trial, map, "p", source);
    ExpectEntries(trial, "a map with a sub-map from the caller's own class", *map, {"p\\x=1", "p\\y\\z=2"});
    trial.Equal("the reference count of the source", source->GetRefCount(), 1u);
}

void RestoresTheMode(Trial& trial)
{
    const auto source = MakeFilledMap(trial, {{"x", "1"}});
    const auto map = MakeSimpleMap(trial);
    for (const bool mode : {true, false})
    {
        trial.Gives("SetBatchUpdatingMode", map->SetBatchUpdatingMode(mode), TVX_OK);
        SetSubMap(trial, map, "p", source);
        trial.Equal("the batch updating mode after SetSubMap", IsBatchUpdating(trial, *map), mode);
        trial.Equal("the batch updating mode of the source", IsBatchUpdating(trial, *source), true);
    }
}

void ComesBack(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"p", "0"}, {"q\\x", "1"}});
    SetSubMap(trial, map, "p\\q", MakeFilledMap(trial, {{"", "0"}, {"x", "1"}, {"y\\z", "2"}}));
    Ref<ISimpleMap> sub;
    trial.Gives("GetSubMap of what SetSubMap wrote", map->GetSubMap("p\\q", sub.Receive()), TVX_S_VALUE);
    trial.Expect(static_cast<bool>(sub), "GetSubMap to give a map", "null");
    ExpectEntries(trial, "a sub-map that was written and read", *sub, {"=0", "x=1", "y\\z=2"});
}

constexpr Check Checks[] = {
    {"value-settings-map-set-sub-map-writes-below-its-path", "A map is written below a path.",
     "Every key of the source is written behind the path and a backslash, also one that begins with a backslash.",
     IsWrittenBelowItsPath},
    {"value-settings-map-set-sub-map-of-the-empty-path", "A map is written below the empty path.",
     "The empty path has no backslash: the keys are written unchanged.", IsWrittenUnchangedForTheEmptyPath},
    {"value-settings-map-set-sub-map-of-an-empty-key", "A map with an empty key is written below a path.",
     "The empty key becomes the path and one backslash.", WritesAnEmptyKey},
    {"value-settings-map-set-sub-map-takes-its-path-as-it-is", "A map is written below paths with backslashes.",
     "A path is not checked or changed: one backslash is put behind it, also behind another one.", TakesThePathAsItIs},
    {"value-settings-map-set-sub-map-leaves-other-entries", "A map is written over one that has other entries.",
     "Keys of the source are replaced; those that it lacks stay, also below the path.", LeavesOtherEntries},
    {"value-settings-map-set-sub-map-of-nothing", "An empty map is written below a path.",
     "An empty source is no failure: it gives 0 and changes nothing.", MayBeEmpty},
    {"value-settings-map-set-sub-map-leaves-its-source", "A map is written below a path, then both are written over.",
     "The entries are copied: the source stays as it is, and no reference on it is kept.", LeavesItsSource},
    {"value-settings-map-set-sub-map-of-the-map-itself", "A map is written into itself.",
     "The map is written as if it had been copied before, so that this comes to its end.", MayBeTheMapItself},
    {"value-settings-map-set-sub-map-of-another-class", "A map of the caller's own class is written below a path.",
     "A source is used by its interface only: it may come from any module.", MayBeOfAnotherClass},
    {"value-settings-map-set-sub-map-restores-the-mode",
     "A map is written below a path in and out of batch updating mode.",
     "The batch updating mode is afterwards what it was before.", RestoresTheMode},
    {"value-settings-map-set-sub-map-comes-back", "What SetSubMap wrote is taken with GetSubMap.",
     "GetSubMap gives back, of the same path, what SetSubMap wrote.", ComesBack},
};

}  // namespace

extern const Family WrittenSubMapFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
