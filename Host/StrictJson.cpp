// SPDX-License-Identifier: MIT
#include "Host/StrictJson.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <vector>

namespace tvx::host
{

namespace
{

using Json = nlohmann::json;

bool HasNul(std::string_view text)
{
    return text.find('\0') != std::string_view::npos;
}

// Refuses, while a text is being parsed, what would be lost or cannot be kept: names that stand twice, and depth.
class Guard
{
public:
    bool operator()(int depth, Json::parse_event_t event, const Json& parsed)
    {
        if (depth > MaxJsonDepth)
            RefuseJson("objects and arrays stand more than " + std::to_string(MaxJsonDepth) + " deep");
        if (event == Json::parse_event_t::object_start)
            names_.emplace_back();
        if (event == Json::parse_event_t::object_end)
            names_.pop_back();
        if (event == Json::parse_event_t::key && !names_.back().insert(parsed.get<std::string>()).second)
            RefuseJson("the name \"" + parsed.get<std::string>() + "\" stands twice in one object");
        return true;
    }

private:
    std::vector<std::set<std::string>> names_;
};

void CheckName(const std::string& name, const std::string& key)
{
    if (HasNul(name) || name.find(KeySeparator) != std::string::npos)
        RefuseJson("the name of \"" + key + "\" has a backslash or a NUL in it, which keys do not allow");
}

void VisitBelow(const std::string& path, const Json& object, const VisitMember& visit)
{
    for (const auto& [name, value] : object.items())
    {
        const auto key = path + name;
        CheckName(name, key);
        visit(key, value);
        if (value.is_object())
            VisitBelow(key + KeySeparator, value, visit);
    }
}

}  // namespace

void RefuseJson(std::string why)
{
    std::replace(why.begin(), why.end(), '\0', '?');  // what() would end there
    throw std::runtime_error(why);
}

Json ParseJsonObject(std::string_view text)
{
    if (HasNul(text))  // the parser would take it for the end and drop the rest
        RefuseJson("it has a NUL byte in it");
    Guard guard;
    auto json = Json::parse(text, std::ref(guard));
    if (!json.is_object())
        RefuseJson("it holds something else than one object");
    return json;
}

void VisitMembers(const Json& object, const VisitMember& visit)
{
    VisitBelow("", object, visit);
}

std::string GetJsonText(const Json& value, const std::string& key)
{
    auto text = value.is_string() ? value.get<std::string>() : value.dump();
    if (HasNul(text))
        RefuseJson("the text of \"" + key + "\" has a NUL in it, which settings do not allow");
    return text;
}

std::string GetJsonReason(const std::exception& failure)
{
    constexpr std::size_t shown = 300;
    std::string text = failure.what();
    const auto end = text.find("] ");
    if (text.starts_with('[') && end != std::string::npos)
        text.erase(0, end + 2);
    return text.size() > shown ? text.substr(0, shown) + "..." : text;
}

}  // namespace tvx::host
