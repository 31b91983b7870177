// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>

#include <exception>
#include <functional>
#include <string>
#include <string_view>

namespace tvx::host
{

// JSON files whose members become keys: objects within objects, the names on the way joined by KeySeparator. What would be
// lost or cannot be kept is refused, by an exception that GetJsonReason tells.

// Stands between the names of a key.
inline constexpr char KeySeparator = '\\';

// How many objects and arrays may lie in one another.
inline constexpr int MaxJsonDepth = 200;

// Ends the reading or writing of a file; the text is its reason.
[[noreturn]] void RefuseJson(std::string why);

// One object. Refuses NUL bytes, names that stand twice in one object, and more than MaxJsonDepth levels.
nlohmann::json ParseJsonObject(std::string_view text);

// Takes a member and its key.
using VisitMember = std::function<void(const std::string& key, const nlohmann::json& value)>;

// Calls visit for every member, those of an object after the object itself. Refuses names that a key cannot hold.
void VisitMembers(const nlohmann::json& object, const VisitMember& visit);

// The text of a string, or the shortest JSON text of another value. Refuses a text with a NUL in it.
std::string GetJsonText(const nlohmann::json& value, const std::string& key);

// What an exception says, without the library's own name and number before it, and cut when it shows a very long text.
std::string GetJsonReason(const std::exception& failure);

}  // namespace tvx::host
