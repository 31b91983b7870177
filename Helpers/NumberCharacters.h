// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// The characters that numbers are written with, in every locale alike, and the whole numbers they form. For NumberText.h.
namespace tvx::detail
{

inline bool IsSpace(char character) noexcept
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

inline const char* SkipSpace(const char* text) noexcept
{
    while (IsSpace(*text))
    {
        ++text;
    }
    return text;
}

// For letters only: other characters may come out as something else, but never as a letter.
inline int ToLower(char character) noexcept
{
    return character | 0x20;
}

// The value of a decimal digit; 10 or more for any other character.
inline std::uint32_t ToDigit(char character) noexcept
{
    return std::uint32_t{static_cast<unsigned char>(character)} - '0';
}

inline bool IsDecimalDigit(char character) noexcept
{
    return ToDigit(character) < 10;
}

inline bool IsDigit(char character, int base) noexcept
{
    return IsDecimalDigit(character) || (base == 16 && ToLower(character) >= 'a' && ToLower(character) <= 'f');
}

inline bool StartsWithSign(const char* text) noexcept
{
    return *text == '-' || *text == '+';
}

inline bool StartsWithDigits(const char* text, int base) noexcept
{
    return IsDigit(*text, base) || (*text == '.' && IsDigit(text[1], base));
}

inline bool StartsWithWord(const char* text, const char* lowerCaseWord) noexcept
{
    for (; *lowerCaseWord != '\0'; ++text, ++lowerCaseWord)
    {
        if (ToLower(*text) != *lowerCaseWord)
        {
            return false;
        }
    }
    return true;
}

// A lone "0x" is the number 0 followed by an x.
inline bool StartsWithHex(const char* text) noexcept
{
    return *text == '0' && ToLower(text[1]) == 'x' && StartsWithDigits(text + 2, 16);
}

// Stops growing far beyond every 32-bit number and every length of a text.
inline std::int64_t ReadDigits(const char* text) noexcept
{
    constexpr std::int64_t limit = 100'000'000'000'000'000;
    std::int64_t value = 0;
    for (auto digit = ToDigit(*text); digit < 10 && value < limit; digit = ToDigit(*++text))
    {
        value = value * 10 + digit;
    }
    return value;
}

// Sign and digits; 0 when there are none.
inline std::int64_t ReadWhole(const char* text) noexcept
{
    if (*text == '-')
    {
        return -ReadDigits(text + 1);
    }
    return ReadDigits(*text == '+' ? text + 1 : text);
}

// What the exponent behind mark says; a malformed one counts as not there.
inline std::int64_t ReadExponent(const char* text, char mark) noexcept
{
    return ToLower(*text) == mark ? ReadWhole(text + 1) : 0;
}

}  // namespace tvx::detail
