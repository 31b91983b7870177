// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string_view>

namespace tvx::host
{

// The letters of ASCII, whatever the locale says.
constexpr char ToLowerAscii(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

// Whether both are the same but for the case of these letters.
constexpr bool IsSameWord(std::string_view one, std::string_view other)
{
    const auto isSame = [](char left, char right) { return ToLowerAscii(left) == ToLowerAscii(right); };
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), isSame);
}

}  // namespace tvx::host
