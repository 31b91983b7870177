// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/NumberDigits.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <system_error>

// Doubles whose bits the text gives: hexadecimal numbers and what is not a number. For NumberText.h.
namespace tvx::detail
{

inline double DoubleOfBits(std::uint64_t bits) noexcept
{
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Rounds significand times 2 to the power of exponent to the nearest double, ties to even. The significand is not 0;
// hasRest says that the exact number is a little greater.
inline double RoundBinary(std::uint64_t significand, bool hasRest, std::int64_t exponent) noexcept
{
    constexpr std::int64_t smallestExponent = -1074;
    constexpr std::uint64_t half = std::uint64_t{1} << 63;
    for (; significand < half; significand <<= 1)
    {
        --exponent;
    }
    const std::int64_t unitExponent = std::max(exponent + 11, smallestExponent);
    const std::int64_t dropped = unitExponent - exponent;  // bits below the last one that a double can keep
    if (unitExponent > 971)
    {
        return std::numeric_limits<double>::infinity();
    }
    if (dropped > 64)
    {
        return 0;
    }
    const std::uint64_t kept = dropped == 64 ? 0 : significand >> dropped;
    const std::uint64_t rest = dropped == 64 ? significand : significand << (64 - dropped);
    const bool isUp = rest > half || (rest == half && (hasRest || kept % 2 == 1));
    // The leading bit of a normal number, and the carry of rounding up, add one to the exponent field.
    const auto exponentField = static_cast<std::uint64_t>(unitExponent - smallestExponent);
    return DoubleOfBits((exponentField << 52) + kept + (isUp ? 1 : 0));
}

inline double ReadHex(const char* text) noexcept
{
    Digits digits(16);
    text = digits.Read(text);
    if (digits.GetCount() == 0)
    {
        return 0;
    }
    const std::int64_t taken = std::min<std::int64_t>(digits.GetCount(), 16);
    const char* const takenEnd = digits.Begin() + taken;
    std::uint64_t significand = 0;
    std::from_chars(digits.Begin(), takenEnd, significand, 16);
    const bool hasRest = std::any_of(takenEnd, digits.End(), [](char digit) { return digit != '0'; });
    const std::int64_t digitExponent = digits.GetExponent() + digits.GetCount() - taken;
    return RoundBinary(significand, hasRest, digitExponent * 4 + ReadExponent(text, 'p'));
}

// The whole number between the brackets of "nan(…)", decimal, octal behind 0 or hexadecimal behind 0x; 0 when the
// brackets or the number are malformed.
inline std::uint64_t ReadNanPayload(const char* text) noexcept
{
    const char* const begin = text + 1;
    const char* const end = *text == '(' ? std::strchr(begin, ')') : nullptr;
    if (end == nullptr)
    {
        return 0;
    }
    const bool isHex = *begin == '0' && ToLower(begin[1]) == 'x';
    const int base = isHex ? 16 : *begin == '0' ? 8 : 10;
    std::uint64_t payload = 0;
    const auto read = std::from_chars(begin + (isHex ? 2 : 0), end, payload, base);
    if (read.ptr != end)
    {
        return 0;
    }
    return read.ec == std::errc::result_out_of_range ? std::numeric_limits<std::uint64_t>::max() : payload;
}

inline double ReadNan(const char* payloadText) noexcept
{
    constexpr std::uint64_t quietNan = 0x7FF8'0000'0000'0000;
    constexpr std::uint64_t payloadMask = 0x0007'FFFF'FFFF'FFFF;
    return DoubleOfBits(quietNan | (ReadNanPayload(payloadText) & payloadMask));
}

}  // namespace tvx::detail
