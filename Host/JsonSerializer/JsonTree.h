// SPDX-License-Identifier: MIT
#pragma once

#include "Host/JsonSerializer/JsonText.h"

#include <string>
#include <string_view>

namespace tvx::host
{

// How many objects and arrays may lie in one another in a text. Far more than the serializer ever writes; a text that
// goes deeper is hostile and is refused as soon as it does.
inline constexpr std::size_t MaxJsonNesting = 1024;

// Parses a text, whose top has to be an object, into tree. Gives what is wrong and where, or the empty text when
// nothing is. An object in which a name stands twice is refused: which of its values counts would be guesswork.
std::string ParseJson(std::string_view text, Json& tree);

}  // namespace tvx::host
