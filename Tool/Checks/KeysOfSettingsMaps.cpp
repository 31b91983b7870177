// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SettingsMaps.h"

#include <map>

namespace tvx::check
{

namespace
{

void AreInByteOrder(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"\xFF", "9"},
                                           {"ab", "7"},
                                           {"a]", "6"},
                                           {"\xC3\xA4", "8"},
                                           {"B", "2"},
                                           {"a", "3"},
                                           {"A", "1"},
                                           {"a\\b", "5"},
                                           {"a-b", "4"},
                                           {"", "0"}});
    ExpectEntries(trial, "a map that was filled in disorder", *map,
                  {"=0", "A=1", "B=2", "a=3", "a-b=4", "a\\b=5", "a]=6", "ab=7", "\xC3\xA4=8", "\xFF=9"});
}

void AreCaseSensitive(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"A", "great"}, {"a", "small"}});
    ExpectText(trial, *map, "A", "great");
    ExpectText(trial, *map, "a", "small");
    ExpectAbsent(trial, *MakeFilledMap(trial, {{"Key", "1"}}), "key");
}

void AreComparedWhole(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"Display\\Width", "640"}});
    for (const char* key :
         {"", "Display", "Display\\", "Display\\Widt", "Display\\Width2", "Display\\Width\\", "Display/Width",
          "\\Display\\Width", " Display\\Width", "Display\\Width ", "Display\\\\Width", "Width"})
    {
        ExpectAbsent(trial, *map, key);
        trial.Equal("HasKey of " + Show(std::string_view(key)), HasKey(trial, *map, key), false);
    }
    ExpectText(trial, *map, "Display\\Width", "640");
}

void HoldBackslashesAsTheyAre(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a\\b", "1"}, {"a", "2"}, {"a\\", "3"}, {"\\a", "4"}, {"a\\\\b", "5"}});
    ExpectEntries(trial, "a map of keys with backslashes", *map, {"\\a=4", "a=2", "a\\=3", "a\\\\b=5", "a\\b=1"});
    ExpectText(trial, *map, "a\\b", "1");
    ExpectText(trial, *map, "a", "2");
}

void MayBeEmpty(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a", "1"}, {"", "nameless"}});
    ExpectText(trial, *map, "", "nameless");
    trial.Equal("HasKey of the empty key", HasKey(trial, *map, ""), true);
}

// Both answers are written, whatever was in the out before.
void ArePresentOrNot(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a\\b", "1"}});
    bool out = false;
    trial.Gives("HasKey of a present key", map->HasKey("a\\b", &out), TVX_OK);
    trial.Equal("the answer of HasKey for a present key", out, true);
    trial.Gives("HasKey of an absent key", map->HasKey("b", &out), TVX_OK);
    trial.Equal("the answer of HasKey for an absent key", out, false);
}

void AreNotPresentByAPrefix(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"ab\\cd", "1"}});
    for (const char* key : {"", "a", "ab", "ab\\", "ab\\c"})
        trial.Equal("HasKey of a prefix of a key", HasKey(trial, *map, key), false);
}

void AreNotNull(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"", "1"}});
    bool out = false;
    trial.Gives("HasKey with a null key", map->HasKey(nullptr, &out), TVX_E_POINTER);
}

void MayBeMany(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    std::map<std::string, std::string> model;
    for (int count = 0; count < 1000; ++count)
    {
        const auto key = Show(trial.GetRandom().Below(700));
        const auto value = Show(trial.GetRandom().Next());
        model[key] = value;
        trial.Gives("SetString", map->SetString(key.c_str(), value.c_str()), TVX_OK);
    }
    Texts expected;
    for (const auto& [key, value] : model)
        expected.push_back(key + "=" + value);
    trial.Expect(GetEntries(trial, *map) == expected, "1000 writes in disorder to leave every key once, in order",
                 "other entries");
    for (const auto& [key, value] : model)
        ExpectText(trial, *map, key.c_str(), value);
}

constexpr Check Checks[] = {
    {"value-settings-map-keys-are-in-byte-order", "Keys are written in disorder, and the map is walked.",
     "Keys are ordered by their bytes, taken as unsigned, and a shorter key comes before its continuations.",
     AreInByteOrder},
    {"value-settings-map-keys-are-case-sensitive", "Keys that differ in case only are written and read.",
     "Keys are compared byte by byte: case is never folded.", AreCaseSensitive},
    {"value-settings-map-keys-are-compared-whole", "Keys that resemble a present one are asked for.",
     "Only the very key is found: nothing is trimmed, and slashes and repeated backslashes are not made alike.",
     AreComparedWhole},
    {"value-settings-map-keys-may-hold-backslashes", "Keys with backslashes in all places are written and read.",
     "A backslash in a key means something to GetSubMap and SetSubMap only; elsewhere a key is one plain text.",
     HoldBackslashesAsTheyAre},
    {"value-settings-map-key-may-be-empty", "A value is written under the empty key.", "The empty text is a key.",
     MayBeEmpty},
    {"value-settings-map-has-key-gives-both-answers", "HasKey is asked for a present key and then for an absent one.",
     "HasKey gives 0 in both cases and writes the answer to its out.", ArePresentOrNot},
    {"value-settings-map-has-key-refuses-a-prefix", "HasKey is asked for prefixes of a present key.",
     "A prefix of a key is not a key, also when it ends at a backslash.", AreNotPresentByAPrefix},
    {"value-settings-map-has-key-null-key-is-refused-silently", "HasKey is called with a null key.",
     "A null key gives -4 without a report line.", AreNotNull},
    {"value-settings-map-keeps-many-entries", "A map is filled by 1000 writes in disorder and compared with a model.",
     "However many entries there are, each key is there once, in order, with what was written last.", MayBeMany},
};

}  // namespace

extern const Family KeysOfSettingsMapFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
