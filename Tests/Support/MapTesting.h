// SPDX-License-Identifier: MIT
#pragma once

#include "Src/SimpleMap.h"
#include "Src/String.h"

#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvx::test
{

using Texts = std::vector<std::string>;

inline Ref<IString> MakeString(std::string_view text)
{
    return Ref<IString>(MakeRef<String>(text));
}

// Writes the entries in the order given; the map is left in the mode that it is in.
inline void Fill(ISimpleMap& map, std::initializer_list<std::pair<const char*, const char*>> entries)
{
    for (const auto& [key, value] : entries)
        map.SetString(key, value);
}

inline Ref<SimpleMap> MakeMap(std::initializer_list<std::pair<const char*, const char*>> entries = {})
{
    auto map = MakeRef<SimpleMap>();
    Fill(*map, entries);
    return map;
}

// A map out of batch updating mode, without a pending change.
inline Ref<SimpleMap> MakeImmediateMap(std::initializer_list<std::pair<const char*, const char*>> entries = {})
{
    auto map = MakeMap(entries);
    map->SetBatchUpdatingMode(false);
    return map;
}

// The rest of what an iterator walks, one text "key=value" for each entry.
inline Texts Walk(ISimpleMapIterator& iterator)
{
    Texts entries;
    for (; iterator.GetKey() != nullptr; iterator.Next())
        entries.push_back(std::string(iterator.GetKey()) + "=" + iterator.GetValue());
    return entries;
}

inline Texts Entries(ISimpleMap& map)
{
    Ref<ISimpleMapIterator> iterator;
    map.GetIterator(iterator.Receive());
    return Walk(*iterator);
}

// The text under key, or a text that no test writes when it is absent.
inline std::string TextUnder(ISimpleMap& map, const char* key)
{
    Ref<IString> text;
    return map.GetString(key, text.Receive()) == TVX_S_VALUE ? text->GetText() : "(absent)";
}

inline bool IsBatchUpdating(ISimpleMap& map)
{
    bool mode = false;
    map.GetBatchUpdatingMode(&mode);
    return mode;
}

// An event of a settings map as a text: "Changed", "Mode true" or "Mode false".
inline std::string DescribeMapEvent(const std::string& eventName, std::uint64_t param)
{
    if (eventName != "BatchUpdatingModeChanged")
        return eventName;
    bool mode = false;
    reinterpret_cast<IVariant*>(static_cast<std::uintptr_t>(param))->GetBool(&mode);
    return mode ? "Mode true" : "Mode false";
}

// The address that events of map carry as their sender.
inline const void* SenderOf(SimpleMap& map)
{
    return static_cast<IObject*>(static_cast<ISimpleMap5*>(&map));
}

// Each line with its line end.
inline Texts SplitLines(const std::string& output)
{
    Texts lines;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line + "\n");
    return lines;
}

}  // namespace tvx::test
