// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tvx
{

namespace detail
{

template <class Word>
bool IsSameWord(const char* left, const char* right) noexcept
{
    Word leftWord;
    Word rightWord;
    std::memcpy(&leftWord, left, sizeof(Word));
    std::memcpy(&rightWord, right, sizeof(Word));
    return leftWord == rightWord;
}

// Two words at once.
struct Pair
{
    friend bool operator==(const Pair& left, const Pair& right) noexcept
    {
        return ((left.first ^ right.first) | (left.second ^ right.second)) == 0;
    }

    std::uint64_t first;
    std::uint64_t second;
};

// By whole words, the last of which may overlap the one before it. There is at least one.
template <class Word>
bool HasSameWords(const char* left, const char* right, std::size_t size) noexcept
{
    const auto last = size - sizeof(Word);
    for (std::size_t i = 0; i < last; i += sizeof(Word))
    {
        if (!IsSameWord<Word>(left + i, right + i))
            return false;
    }
    return IsSameWord<Word>(left + last, right + last);
}

}  // namespace detail

// Whether size bytes are the same, as std::memcmp would find, without a call: for the short texts of names and identifiers.
inline bool EqualBytes(const char* left, const char* right, std::size_t size) noexcept
{
    if (size >= sizeof(detail::Pair))
        return detail::HasSameWords<detail::Pair>(left, right, size);
    if (size >= sizeof(std::uint64_t))
        return detail::HasSameWords<std::uint64_t>(left, right, size);
    if (size >= sizeof(std::uint32_t))
        return detail::HasSameWords<std::uint32_t>(left, right, size);
    for (std::size_t i = 0; i < size; ++i)
    {
        if (left[i] != right[i])
            return false;
    }
    return true;
}

}  // namespace tvx
