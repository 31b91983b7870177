// SPDX-License-Identifier: MIT
#include "Host/SettingsJson.h"

#include "Helpers/Ref.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace tvx::host
{

namespace
{

using Json = nlohmann::json;
using Entries = std::vector<std::pair<std::string, std::string>>;

constexpr char Separator = '\\';
constexpr int MaxDepth = 200;

// Ends the reading or writing at once; its text is what the caller gets.
[[noreturn]] void Refuse(std::string why)
{
    std::replace(why.begin(), why.end(), '\0', '?');  // what() would end there
    throw std::runtime_error(why);
}

bool HasNul(const std::string& text)
{
    return text.find('\0') != std::string::npos;
}

// Refuses, while a text is being parsed, what would be lost or cannot be kept: names that stand twice, and depth.
class Guard
{
public:
    bool operator()(int depth, Json::parse_event_t event, const Json& parsed)
    {
        if (depth > MaxDepth)
            Refuse("objects and arrays stand more than " + std::to_string(MaxDepth) + " deep");
        if (event == Json::parse_event_t::object_start)
            names_.emplace_back();
        if (event == Json::parse_event_t::object_end)
            names_.pop_back();
        if (event == Json::parse_event_t::key && !names_.back().insert(parsed.get<std::string>()).second)
            Refuse("the name \"" + parsed.get<std::string>() + "\" stands twice in one object");
        return true;
    }

private:
    std::vector<std::set<std::string>> names_;
};

void CheckName(const std::string& name, const std::string& key)
{
    if (HasNul(name) || name.find(Separator) != std::string::npos)
        Refuse("the name of \"" + key + "\" has a backslash or a NUL in it, which keys do not allow");
}

// The text that a map keeps for a value.
std::string ToText(const Json& value, const std::string& key)
{
    auto text = value.is_string() ? value.get<std::string>() : value.dump();
    if (HasNul(text))
        Refuse("the text of \"" + key + "\" has a NUL in it, which settings do not allow");
    return text;
}

void Flatten(const Json& object, const std::string& path, Entries& entries)
{
    for (const auto& [name, value] : object.items())
    {
        const auto key = path + name;
        CheckName(name, key);
        if (value.is_object() && !value.empty())
            Flatten(value, key + Separator, entries);
        else
            entries.emplace_back(key, ToText(value, key));
    }
}

Entries Parse(std::string_view text)
{
    if (text.find('\0') != std::string_view::npos)  // the parser would take it for the end and drop the rest
        Refuse("it has a NUL byte in it");
    Guard guard;
    const auto json = Json::parse(text, std::ref(guard));
    if (!json.is_object())
        Refuse("it holds something else than one object");
    Entries entries;
    Flatten(json, "", entries);
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
        for (auto end = key.find(Separator); end != std::string::npos; end = key.find(Separator, begin))
        {
            node = &(*node)[key.substr(begin, end - begin)];
            Enter(*node, key.substr(0, end), ++depth);
            begin = end + 1;
        }
        (*node)[key.substr(begin)] = ToValue(text, MaxDepth - depth);
        leaves_.insert(key);
    }

    std::string Print() const { return root_.dump(4) + "\n"; }

private:
    void Enter(Json& node, const std::string& path, int depth) const
    {
        if (leaves_.count(path) > 0)
            Refuse("\"" + path + "\" has a value of its own and others below it");
        if (depth > MaxDepth)
            Refuse("a key has more than " + std::to_string(MaxDepth) + " levels");
        if (node.is_null())
            node = Json::object();
    }

    Json root_ = Json::object();
    std::set<std::string> leaves_;
};

// What the library says, without its own name and number before it, and cut when it shows a very long text.
std::string GetReason(const std::exception& failure)
{
    constexpr std::size_t shown = 300;
    std::string text = failure.what();
    const auto end = text.find("] ");
    if (text.starts_with('[') && end != std::string::npos)
        text.erase(0, end + 2);
    return text.size() > shown ? text.substr(0, shown) + "..." : text;
}

void Store(const Entries& entries, ISimpleMap& map)
{
    bool modeBefore = true;
    map.GetBatchUpdatingMode(&modeBefore);
    map.SetBatchUpdatingMode(true);
    const auto isRefused = [&](const auto& entry)
    { return TVX_FAILED(map.SetString(entry.first.c_str(), entry.second.c_str())); };
    const auto refused = std::find_if(entries.begin(), entries.end(), isRefused);
    map.SetBatchUpdatingMode(modeBefore);
    if (refused != entries.end())
        Refuse("the map does not take \"" + refused->first + "\"");
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
    return MakeError(ErrorKind::BadSettings, std::string(origin) + " is no settings file: " + GetReason(failure));
}

Outcome<std::string> WriteSettings(ISimpleMap& map)
try
{
    Tree tree;
    Ref<ISimpleMapIterator> iterator;
    if (TVX_FAILED(map.GetIterator(iterator.Receive())))
        Refuse("the map gives no iterator");
    for (; iterator->GetKey() != nullptr; iterator->Next())
        tree.Add(iterator->GetKey(), iterator->GetValue());
    return tree.Print();
}
catch (const std::exception& failure)
{
    return MakeError(ErrorKind::BadSettings, "no settings file can say this map: " + GetReason(failure));
}

}  // namespace tvx::host
