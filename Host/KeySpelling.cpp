// SPDX-License-Identifier: MIT
#include "Host/KeySpelling.h"

#include "Host/AsciiCase.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tvx::host
{

namespace
{

constexpr std::size_t LettersForAMistake = 4;

// How many letters have to be added, removed or replaced to make one text of the other. Goes through one text letter by
// letter and keeps the distance to each beginning of the other.
std::size_t Distance(std::string_view text, std::string_view word)
{
    std::vector<std::size_t> distances(word.size() + 1);
    for (std::size_t i = 0; i < distances.size(); ++i)
        distances[i] = i;
    for (const char letter : text)
    {
        auto diagonal = distances[0]++;
        for (std::size_t i = 0; i < word.size(); ++i)
        {
            const auto replaced = diagonal + (ToLowerAscii(letter) == ToLowerAscii(word[i]) ? 0 : 1);
            diagonal = distances[i + 1];
            distances[i + 1] = std::min({replaced, diagonal + 1, distances[i] + 1});
        }
    }
    return distances.back();
}

}  // namespace

bool IsMisspelt(std::string_view text, std::string_view word)
{
    const auto mistakes = word.size() / LettersForAMistake;
    const bool isFarOff = text.size() > word.size() + mistakes || text.size() + mistakes < word.size();
    return text != word && !isFarOff && Distance(text, word) <= mistakes;
}

}  // namespace tvx::host
