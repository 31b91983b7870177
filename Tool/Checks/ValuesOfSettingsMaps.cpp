// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SettingsMaps.h"

namespace tvx::check
{

namespace
{

void IsMadeEmpty(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    ExpectEntries(trial, "a new map", *map, {});
    ExpectAbsent(trial, *map, "");
    trial.Equal("HasKey of the empty key in a new map", HasKey(trial, *map, ""), false);
}

void IsMadeInBatchMode(Trial& trial)
{
    trial.Equal("the batch updating mode of a new map", IsBatchUpdating(trial, *MakeSimpleMap(trial)), true);
}

void TellsItsBatchMode(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    for (const bool mode : {false, false, true, true, false})
    {
        trial.Gives("SetBatchUpdatingMode", map->SetBatchUpdatingMode(mode), TVX_OK);
        bool out = !mode;
        trial.Gives("GetBatchUpdatingMode", map->GetBatchUpdatingMode(&out), TVX_OK);
        trial.Equal("the batch updating mode that was set", out, mode);
    }
}

void IsNewEachTime(Trial& trial)
{
    const auto first = MakeFilledMap(trial, {{"a", "1"}});
    const auto second = MakeFilledMap(trial, {{"b", "2"}});
    trial.Expect(first.Get() != second.Get(), "Create to make a new map each time", "the same one twice");
    ExpectEntries(trial, "the first of two maps", *first, {"a=1"});
    ExpectEntries(trial, "the second of two maps", *second, {"b=2"});
}

void BelongsToItsCaller(Trial& trial)
{
    const auto factory = trial.Get<IFactory>(SimpleMapExport);
    const auto map = Make<IObjectBase>(trial, "Create", [&](IObjectBase** out) { return factory->Create(out); });
    trial.Equal("the reference count of a new map", map->GetRefCount(), 1u);
    trial.Equal("IsUnique of a new map", map->IsUnique(), true);
}

void GivesItsTexts(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a", "1"}, {"b", "two"}});
    ExpectText(trial, *map, "a", "1");
    ExpectText(trial, *map, "b", "two");
    trial.Equal("GetLength of the text", GetText(trial, *map, "b")->GetLength(), 3u);
}

void GivesNewStrings(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a", "1"}});
    const auto first = GetText(trial, *map, "a");
    const auto second = GetText(trial, *map, "a");
    trial.Expect(first.Get() != second.Get(), "GetString to make a new string each time", "the same one twice");
    trial.Equal("the reference count of a text that a map gave", first->GetRefCount(), 1u);
}

void TextsOutliveTheMap(Trial& trial)
{
    auto map = MakeFilledMap(trial, {{"a", "before"}});
    const auto text = GetText(trial, *map, "a");
    Fill(trial, *map, {{"a", "after"}});
    trial.Equal("a text that is written over in its map", text->GetText(), "before");
    map = nullptr;
    trial.Equal("a text whose map is gone", text->GetText(), "before");
}

void LeavesOutUntouched(Trial& trial)
{
    ExpectAbsent(trial, *MakeSimpleMap(trial), "a");
    ExpectAbsent(trial, *MakeFilledMap(trial, {{"a", "1"}, {"c", "3"}}), "b");
}

void ReplacesValues(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a", "first"}, {"b", "2"}, {"a", "a longer one"}, {"a", "s"}});
    ExpectText(trial, *map, "a", "s");
    ExpectEntries(trial, "a map whose first entry was written three times", *map, {"a=s", "b=2"});
}

void CopiesWhatItIsGiven(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    std::string key = "key";
    std::string value = "value";
    trial.Gives("SetString", map->SetString(key.c_str(), value.c_str()), TVX_OK);
    key = "yek";
    value = "eulav";
    ExpectEntries(trial, "a map whose writer wrote over key and value", *map, {"key=value"});
}

void KeepsAnEmptyValue(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a", "1"}, {"a", ""}});
    ExpectText(trial, *map, "a", "");
    trial.Equal("HasKey of a key with an empty value", HasKey(trial, *map, "a"), true);
}

void KeepsEveryByte(Trial& trial)
{
    std::string text;
    for (int byte = 1; byte < 256; ++byte)
        text.push_back(static_cast<char>(byte));
    const auto map = MakeSimpleMap(trial);
    trial.Gives("SetString of the bytes 1 to 255", map->SetString(text.c_str(), text.c_str()), TVX_OK);
    ExpectEntries(trial, "a map with the bytes 1 to 255", *map, {text + "=" + text});
    ExpectText(trial, *map, text.c_str(), text);
}

void KeepsLongTexts(Trial& trial)
{
    const std::string key(10'000, 'k');
    const std::string value(1 << 20, 'v');
    const auto map = MakeSimpleMap(trial);
    trial.Gives("SetString of 1 MiB under a key of 10000 bytes", map->SetString(key.c_str(), value.c_str()), TVX_OK);
    ExpectText(trial, *map, key.c_str(), value);
    trial.Equal("HasKey of a shorter key", HasKey(trial, *map, key.c_str() + 1), false);
}

void RefusesANullValue(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"a", "1"}});
    trial.Gives("SetString with a null value", map->SetString("a", nullptr), TVX_E_POINTER);
    trial.Gives("SetString of a new key with a null value", map->SetString("b", nullptr), TVX_E_POINTER);
    ExpectEntries(trial, "a map that null values were refused by", *map, {"a=1"});
}

constexpr Check Checks[] = {
    {"value-settings-map-is-made-empty", "A new map is walked and asked for the empty key.",
     "A new map has no entries.", IsMadeEmpty},
    {"value-settings-map-is-made-in-batch-mode", "A new map is asked for its batch updating mode.",
     "A new map is in batch updating mode, so that filling it raises no events.", IsMadeInBatchMode},
    {"value-settings-map-tells-its-batch-mode", "The batch updating mode is set, also to what it is, and asked for.",
     "GetBatchUpdatingMode gives 0 and the mode that was set last; setting it gives 0.", TellsItsBatchMode},
    {"value-settings-map-is-new-each-time", "Two maps are made and filled.",
     "Every Create makes a map of its own, independent of the others.", IsNewEachTime},
    {"value-settings-map-belongs-to-its-caller", "The reference count of a new map is asked for.",
     "A new map carries exactly one reference, which the caller owns.", BelongsToItsCaller},
    {"value-settings-map-gives-its-texts", "Texts are written and read.",
     "GetString of a present key gives 102 and the text that was written.", GivesItsTexts},
    {"value-settings-map-text-is-a-new-string", "GetString is called twice for one key.",
     "GetString makes a new string each time, whose only reference the caller owns.", GivesNewStrings},
    {"value-settings-map-text-outlives-the-map", "A text is read, then written over, then its map is released.",
     "A string that GetString gave holds a copy: nothing that happens to the map changes it.", TextsOutliveTheMap},
    {"value-settings-map-absent-key-leaves-string-untouched", "GetString is called for absent keys.",
     "An absent key gives 101, which is no failure, and leaves out untouched.", LeavesOutUntouched},
    {"value-settings-map-replaces-values", "A key is written three times.",
     "Keys are unique: writing a key again replaces its value.", ReplacesValues},
    {"value-settings-map-copies-what-it-is-given", "Key and value are written over after SetString.",
     "A map keeps copies of key and value.", CopiesWhatItIsGiven},
    {"value-settings-map-keeps-an-empty-value", "A value is replaced by the empty text.",
     "The empty text is a value: its key is present and GetString gives 102.", KeepsAnEmptyValue},
    {"value-settings-map-keeps-every-byte", "All bytes from 1 to 255 are written as a key and as its value.",
     "Keys and values are kept byte for byte: no encoding is assumed and nothing is converted.", KeepsEveryByte},
    {"value-settings-map-keeps-long-texts", "A value of 1 MiB is written under a key of 10000 bytes.",
     "Keys and values may have any length that memory holds.", KeepsLongTexts},
    {"value-settings-map-null-value-is-refused-silently", "SetString is called with a null value.",
     "A null value gives -4 without a report line, and the map stays as it is.", RefusesANullValue},
};

}  // namespace

extern const Family ValuesOfSettingsMapFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
