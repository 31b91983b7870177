// SPDX-License-Identifier: MIT
#include "Host/SettingsJson.h"

#include "Host/SettingsMap.h"
#include "Host/StrictJson.h"

#include <algorithm>
#include <set>

namespace tvx::host
{

namespace
{

using Json = nlohmann::json;

SettingsEntries Parse(std::string_view text)
{
    SettingsEntries entries;
    const auto add = [&entries](const std::string& key, const Json& value)
    {
        if (!value.is_object() || value.empty())
            entries.emplace_back(key, GetJsonText(value, key));
    };
    VisitMembers(ParseJsonObject(text), add);
    return entries;
}

// The value whose shortest form text is, unless it is a filled object, whose members would become keys, or more than room
// deep; else a string.
Json ToValue(const std::string& text, int room)
{
    int deepest = 0;
    const auto measure = [&](int depth, Json::parse_event_t, const Json&)
    {
        deepest = std::max(deepest, depth);
        return depth <= room;
    };
    auto value = Json::parse(text, measure, false);
    const bool filled = value.is_object() && !value.empty();
    if (value.is_discarded() || value.is_string() || filled || deepest > room || value.dump() != text)
        return text;
    return value;
}

// Builds the objects of a settings file, key by key in their order, so that a key comes before those below it.
class Tree
{
public:
    void Add(const std::string& key, const std::string& text)
    {
        auto* node = &root_;
        std::size_t begin = 0;
        int depth = 1;
        for (auto end = key.find(KeySeparator); end != std::string::npos; end = key.find(KeySeparator, begin))
        {
            node = &(*node)[key.substr(begin, end - begin)];
            Enter(*node, key.substr(0, end), ++depth);
            begin = end + 1;
        }
        (*node)[key.substr(begin)] = ToValue(text, MaxJsonDepth - depth);
        leaves_.insert(key);
    }

    std::string Print() const { return root_.dump(4) + "\n"; }

private:
    void Enter(Json& node, const std::string& path, int depth) const
    {
        if (leaves_.count(path) > 0)
            RefuseJson("\"" + path + "\" has a value of its own and others below it");
        if (depth > MaxJsonDepth)
            RefuseJson("a key has more than " + std::to_string(MaxJsonDepth) + " levels");
        if (node.is_null())
            node = Json::object();
    }

    Json root_ = Json::object();
    std::set<std::string> leaves_;
};

void Store(const SettingsEntries& entries, ISimpleMap& map)
{
    bool modeBefore = true;
    map.GetBatchUpdatingMode(&modeBefore);
    map.SetBatchUpdatingMode(true);
    const auto isRefused = [&](const auto& entry)
    { return TVX_FAILED(map.SetString(entry.first.c_str(), entry.second.c_str())); };
    const auto refused = std::find_if(entries.begin(), entries.end(), isRefused);
    map.SetBatchUpdatingMode(modeBefore);
    if (refused != entries.end())
        RefuseJson("the map does not take \"" + refused->first + "\"");
}

}  // namespace

Outcome<std::size_t> ReadSettings(std::string_view text, std::string_view origin, ISimpleMap& map)
try
{
    const auto entries = Parse(text);
    Store(entries, map);
    return entries.size();
}
catch (const std::exception& failure)
{
    return MakeError(ErrorKind::BadSettings, std::string(origin) + " is no settings file: " + GetJsonReason(failure));
}

Outcome<std::string> WriteSettings(ISimpleMap& map)
try
{
    const auto entries = ReadEntries(map);
    if (!entries)
        return entries.GetError();
    Tree tree;
    for (const auto& [key, text] : *entries)
        tree.Add(key, text);
    return tree.Print();
}
catch (const std::exception& failure)
{
    return MakeError(ErrorKind::BadSettings, "no settings file can say this map: " + GetJsonReason(failure));
}

}  // namespace tvx::host
