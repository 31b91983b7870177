// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Check.h"

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tvx::check
{

// Values as sentences show them. Texts stand in quotation marks, are cut when they are long, and show what is no printable
// ASCII as \xHH; a null text is null.
std::string Show(std::string_view text);

// A result code with its name.
std::string ShowResult(std::int32_t code);

template <class Value>
constexpr bool IsText = std::is_convertible_v<Value, std::string_view>;

template <class Value>
constexpr bool IsTextPointer =
    std::is_same_v<std::decay_t<Value>, const char*> || std::is_same_v<std::decay_t<Value>, char*>;

template <class Value>
std::string Show(const Value& value)
{
    if constexpr (std::is_same_v<Value, std::nullptr_t>)
        return "null";
    else if constexpr (std::is_same_v<Value, bool>)
        return value ? "true" : "false";
    else if constexpr (IsTextPointer<Value> && !std::is_array_v<Value>)
        return value == nullptr ? "null" : Show(std::string_view(value));
    else if constexpr (IsText<Value>)
        return Show(std::string_view(value));
    else if constexpr (std::is_enum_v<Value>)
        return std::to_string(static_cast<std::int64_t>(value));
    else
    {
        char digits[64] = {};
        return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
    }
}

template <class Value>
std::string Show(const std::vector<Value>& values)
{
    std::string text;
    for (const auto& value : values)
        text.append(text.empty() ? "" : ", ").append(Show(value));
    return "[" + text + "]";
}

template <class Value>
bool IsNull(const Value& value)
{
    if constexpr (std::is_same_v<Value, std::nullptr_t>)
        return true;
    else if constexpr (IsTextPointer<Value> && !std::is_array_v<Value>)
        return value == nullptr;
    else
        return false;
}

// Whether two values are the same; texts by their bytes, and a null text is only like another one.
template <class Left, class Right>
bool IsSame(const Left& left, const Right& right)
{
    if (IsNull(left) || IsNull(right))
        return IsNull(left) && IsNull(right);
    if constexpr (std::is_same_v<Left, std::nullptr_t> || std::is_same_v<Right, std::nullptr_t>)
        return false;
    else if constexpr (IsText<Left> && IsText<Right>)
        return std::string_view(left) == std::string_view(right);
    else
        return left == right;
}

}  // namespace tvx::check
