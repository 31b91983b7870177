// SPDX-License-Identifier: MIT
#include "Tool/Checks/SettingsMaps.h"

namespace tvx::check
{

namespace
{

constexpr std::size_t MostEntries = 10'000;  // no check has more: a map that never ends is wrong

// "SetString of "key"": what a call is about.
std::string Name(const char* operation, const char* key)
{
    return std::string(operation) + " of " + Show(std::string_view(key));
}

}  // namespace

void Fill(Trial& trial, ISimpleMap& map, Entries entries)
{
    for (const auto& [key, value] : entries)
        trial.Gives(Name("SetString", key), map.SetString(key, value), TVX_OK);
}

Ref<ISimpleMap5> MakeFilledMap(Trial& trial, Entries entries)
{
    auto map = MakeSimpleMap(trial);
    Fill(trial, *map, entries);
    return map;
}

Ref<IString> GetText(Trial& trial, ISimpleMap& map, const char* key)
{
    Ref<IString> text;
    trial.Gives(Name("GetString", key), map.GetString(key, text.Receive()), TVX_S_VALUE);
    trial.Expect(static_cast<bool>(text), Name("GetString", key) + " to give a string", "null");
    return text;
}

void ExpectText(Trial& trial, ISimpleMap& map, const char* key, std::string_view expected)
{
    trial.Equal("the text under " + Show(std::string_view(key)), GetText(trial, map, key)->GetText(), expected);
}

void ExpectAbsent(Trial& trial, ISimpleMap& map, const char* key)
{
    const auto mark = MakeRef<host::HostString>("mark");
    IString* out = mark.Get();
    trial.Gives(Name("GetString", key), map.GetString(key, &out), TVX_S_NOKEY);
    trial.Same("the out of " + Name("GetString", key) + ", an absent key, which leaves it untouched,", out, mark.Get());
}

Texts GetEntries(Trial& trial, ISimpleMap& map)
{
    const auto iterator =
        Make<ISimpleMapIterator>(trial, "GetIterator", [&](ISimpleMapIterator** out) { return map.GetIterator(out); });
    Texts entries;
    for (const char* key = iterator->GetKey(); key != nullptr; iterator->Next(), key = iterator->GetKey())
    {
        const char* const value = iterator->GetValue();
        trial.Expect(value != nullptr, "GetValue at " + Show(std::string_view(key)) + " to give a text", "null");
        trial.Expect(entries.size() < MostEntries, "the iterator of a map to come to its end", "entry after entry");
        entries.push_back(std::string(key) + "=" + value);
    }
    return entries;
}

void ExpectEntries(Trial& trial, const std::string& what, ISimpleMap& map, const Texts& expected)
{
    trial.Equal("the entries of " + what, GetEntries(trial, map), expected);
}

bool HasKey(Trial& trial, ISimpleMap& map, const char* key)
{
    bool out = false;
    trial.Gives(Name("HasKey", key), map.HasKey(key, &out), TVX_OK);
    return out;
}

bool IsBatchUpdating(Trial& trial, ISimpleMap& map)
{
    bool out = false;
    trial.Gives("GetBatchUpdatingMode", map.GetBatchUpdatingMode(&out), TVX_OK);
    return out;
}

}  // namespace tvx::check
