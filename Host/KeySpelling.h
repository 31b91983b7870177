// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace tvx::host
{

// Whether text looks like an attempt at word: the same letters in another case, or so few letters too many, missing or wrong
// that it is hardly meant as another word, one in every four of word. The word itself is none.
bool IsMisspelt(std::string_view text, std::string_view word);

}  // namespace tvx::host
