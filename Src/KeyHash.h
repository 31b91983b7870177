// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tvx
{

namespace detail
{

constexpr std::uint64_t HashFactor = 0x9E37'79B9'7F4A'7C15;
constexpr std::uint64_t OtherHashFactor = 0xC2B2'AE3D'27D4'EB4F;

template <class Word>
std::uint64_t LoadWord(const char* text) noexcept
{
    Word word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

// All bytes of fewer than eight, some of them twice.
inline std::uint64_t LoadShort(const char* text, std::size_t size) noexcept
{
    if (size >= 4)
        return LoadWord<std::uint32_t>(text) << 32 | LoadWord<std::uint32_t>(text + size - 4);
    if (size >= 2)
        return LoadWord<std::uint16_t>(text) << 16 | LoadWord<std::uint16_t>(text + size - 2);
    return size == 0 ? 0 : LoadWord<std::uint8_t>(text);
}

// Two products that do not wait for each other. Every bit of both words reaches the upper half of the last one, which is
// what is taken.
constexpr std::uint32_t MixLast(std::uint64_t word, std::uint64_t last) noexcept
{
    const auto mixed = (word * HashFactor) ^ std::rotl(last * OtherHashFactor, 32);
    return static_cast<std::uint32_t>((mixed ^ (mixed >> 32)) * HashFactor >> 32);
}

}  // namespace detail

// A number that keys with the same bytes share and most others do not; never 0. The same in one process only.
inline std::uint32_t HashKey(std::string_view key) noexcept
{
    constexpr std::uint32_t neverZero = 0x8000'0000;  // chooses no place of fewer than 2^31
    const char* text = key.data();
    std::size_t left = key.size();
    std::uint64_t hash = left;
    if (left < 8)
        return detail::MixLast(hash ^ detail::LoadShort(text, left) << 8, 0) | neverZero;
    for (; left > 16; left -= 8, text += 8)
    {
        hash = (hash ^ detail::LoadWord<std::uint64_t>(text)) * detail::HashFactor;
        hash ^= hash >> 32;
    }
    return detail::MixLast(hash ^ detail::LoadWord<std::uint64_t>(text),
                           detail::LoadWord<std::uint64_t>(text + left - 8)) |
           neverZero;
}

}  // namespace tvx
