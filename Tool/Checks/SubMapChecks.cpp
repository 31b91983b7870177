// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SettingsMaps.h"

namespace tvx::check
{

namespace
{

// The sub-map, which is delivered also when it is empty.
Ref<ISimpleMap> GetSubMap(Trial& trial, const Ref<ISimpleMap5>& map, const char* path, Result expected)
{
    const auto what = "GetSubMap of " + Show(std::string_view(path));
    Ref<ISimpleMap> sub;
    trial.Gives(what, map->GetSubMap(path, sub.Receive()), expected);
    trial.Expect(static_cast<bool>(sub), what + " to give a map", "null");
    return sub;
}

void ExpectSubMap(Trial& trial, const Ref<ISimpleMap5>& map, const char* path, const Texts& expected)
{
    const auto sub = GetSubMap(trial, map, path, expected.empty() ? TVX_S_NOKEY : TVX_S_VALUE);
    ExpectEntries(trial, "the sub-map of " + Show(std::string_view(path)), *sub, expected);
}

void HasAllDescendants(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a", "0"}, {"a\\x", "1"}, {"a\\y\\z", "2"}, {"ab\\q", "3"}, {"b", "4"}});
    ExpectSubMap(trial, map, "a", {"x=1", "y\\z=2"});
}

void IsDeliveredEmpty(Trial& trial)
{
    ExpectSubMap(trial, MakeSimpleMap(trial), "a", {});
    ExpectSubMap(trial, MakeFilledMap(trial, {{"a", "0"}, {"ab\\q", "3"}, {"x\\a\\b", "1"}, {"a/b", "5"}}), "a", {});
}

void OfTheEmptyPath(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"", "0"}, {"a", "1"}, {"\\x", "2"}, {"\\y\\z", "3"}, {"\\", "4"}});
    ExpectSubMap(trial, map, "", {"=4", "x=2", "y\\z=3"});
    ExpectSubMap(trial, MakeFilledMap(trial, {{"", "0"}, {"a\\x", "1"}}), "", {});
}

void OfADeeperPath(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a\\b\\x", "1"}, {"a\\bc\\x", "2"}, {"a\\b\\c\\d", "3"}, {"b\\x", "4"}});
    ExpectSubMap(trial, map, "a\\b", {"c\\d=3", "x=1"});
}

void TakesThePathAsItIs(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a\\x", "1"}, {"a\\\\y", "2"}, {"A\\z", "3"}, {" a\\w", "4"}});
    ExpectSubMap(trial, map, "a\\", {"y=2"});
    ExpectSubMap(trial, map, "A", {"z=3"});
    ExpectSubMap(trial, map, "\\a", {});
}

void TakesThePathAtTheFrontOnly(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"b\\a\\x", "1"}, {"a\\a\\y", "2"}, {"ba\\x", "3"}});
    ExpectSubMap(trial, map, "a", {"a\\y=2"});
}

void HasAnEmptyKey(Trial& trial)
{
    ExpectSubMap(trial, MakeFilledMap(trial, {{"a\\", "1"}, {"a", "2"}}), "a", {"=1"});
}

void IsACopy(Trial& trial)
{
    auto map = MakeFilledMap(trial, {{"a\\x", "1"}, {"a\\y", "2"}});
    const auto sub = GetSubMap(trial, map, "a", TVX_S_VALUE);
    Fill(trial, *sub, {{"x", "changed"}, {"z", "new"}});
    ExpectEntries(trial, "a map whose sub-map was written", *map, {"a\\x=1", "a\\y=2"});
    Fill(trial, *map, {{"a\\y", "changed"}});
    map = nullptr;
    ExpectEntries(trial, "a sub-map whose map was written and released", *sub, {"x=changed", "y=2", "z=new"});
}

void BelongsToItsCaller(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a\\x", "1"}});
    const auto first = GetSubMap(trial, map, "a", TVX_S_VALUE);
    const auto second = GetSubMap(trial, map, "a", TVX_S_VALUE);
    trial.Expect(first.Get() != second.Get(), "GetSubMap to make a new map each time", "the same one twice");
    trial.Equal("the reference count of a sub-map", first->GetRefCount(), 1u);
    trial.Equal("the reference count of the map that was asked", map->GetRefCount(), 1u);
}

void IsInBatchMode(Trial& trial)
{
    const auto map = MakeImmediateSimpleMap(trial);
    Fill(trial, *map, {{"a\\x", "1"}});
    trial.Equal("the mode of a sub-map", IsBatchUpdating(trial, *GetSubMap(trial, map, "a", TVX_S_VALUE)), true);
    trial.Equal("the mode of an empty sub-map", IsBatchUpdating(trial, *GetSubMap(trial, map, "b", TVX_S_NOKEY)), true);
    trial.Equal("the mode of the map that was asked", IsBatchUpdating(trial, *map), false);
}

constexpr Check Checks[] = {
    {"value-settings-map-sub-map-has-all-descendants", "The sub-map of a path is taken from keys below and beside it.",
     "GetSubMap gives 102 and every entry whose key begins with the path and a backslash, without them, however deep.",
     HasAllDescendants},
    {"value-settings-map-sub-map-is-delivered-empty", "The sub-map of a path without entries is taken.",
     "GetSubMap gives 101, which is no failure, and delivers an empty map; an entry of the path itself is not below "
     "it.",
     IsDeliveredEmpty},
    {"value-settings-map-sub-map-of-the-empty-path", "The sub-map of the empty path is taken.",
     "Below the empty path are exactly the keys that begin with a backslash.", OfTheEmptyPath},
    {"value-settings-map-sub-map-of-a-deeper-path", "The sub-map of a path of two levels is taken.",
     "A path may have any number of levels.", OfADeeperPath},
    {"value-settings-map-sub-map-takes-its-path-as-it-is", "Paths with a backslash at either end are asked for.",
     "A path is compared byte by byte and one backslash is put behind it, also behind another one.",
     TakesThePathAsItIs},
    {"value-settings-map-sub-map-path-is-at-the-front", "A path is asked for that stands inside other keys.",
     "Only keys that begin with the path are below it, and only its first occurrence is left out.",
     TakesThePathAtTheFrontOnly},
    {"value-settings-map-sub-map-may-have-an-empty-key",
     "The sub-map of a path is taken where a key is path and backslash.",
     "The key that is nothing but the path and a backslash becomes the empty key.", HasAnEmptyKey},
    {"value-settings-map-sub-map-is-a-copy", "A sub-map and its map are written, and the map is released.",
     "A sub-map is a map of its own: what happens to one afterwards does not show in the other.", IsACopy},
    {"value-settings-map-sub-map-belongs-to-its-caller", "The same sub-map is taken twice, and references are counted.",
     "Each GetSubMap makes a new map with one reference, which the caller owns; it holds none on its map.",
     BelongsToItsCaller},
    {"value-settings-map-sub-map-is-in-batch-mode", "Sub-maps are taken from a map out of batch updating mode.",
     "A sub-map is a new map and so in batch updating mode, whatever the mode of the map, which keeps its own.",
     IsInBatchMode},
};

}  // namespace

extern const Family SubMapFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
