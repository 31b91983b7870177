// SPDX-License-Identifier: MIT
#pragma once

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>

// Finite numbers that are not negative, written as "%Lg" writes them. For NumberText.h.
namespace tvx::detail
{

// The six digits that a number is written with, the first of which is not 0: the number lies near
// digits times 10 to the power of exponent - 5.
struct SixDigits
{
    std::uint32_t digits;
    int exponent;
};

// value times 10 to the power of exponent, wrong by less than four units in the last place. The result is a normal number.
inline double ScaleByTen(double value, int exponent) noexcept
{
    constexpr double small[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    constexpr double large[] = {1e0,   1e16,  1e32,  1e48,  1e64,  1e80,  1e96,  1e112, 1e128, 1e144,
                                1e160, 1e176, 1e192, 1e208, 1e224, 1e240, 1e256, 1e272, 1e288, 1e304};
    const int magnitude = exponent < 0 ? -exponent : exponent;
    if (magnitude < 16)
    {
        return exponent < 0 ? value / small[magnitude] : value * small[magnitude];
    }
    return exponent < 0 ? value / large[magnitude / 16] / small[magnitude % 16]
                        : value * large[magnitude / 16] * small[magnitude % 16];
}

// The power of ten of the first digit of a positive number, or one less.
inline int EstimateExponent(double value) noexcept
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    const int binary = static_cast<int>(bits >> 52) - 1023;
    return (binary * 78913) >> 18;  // log10(2), rounded down
}

// Nothing for 0, for subnormal numbers, and for those so near to the middle between two results that the scaling cannot tell
// which one is nearer. For a number of everyday size that is short, the scaling is exact.
inline std::optional<SixDigits> RoundToSixDigits(double value) noexcept
{
    constexpr double nearTie = 1e-8;  // far more than the scaling can be wrong by: four times 2 to the power of -33
    if (value < std::numeric_limits<double>::min())
    {
        return std::nullopt;
    }
    int exponent = EstimateExponent(value);
    double scaled = ScaleByTen(value, 5 - exponent);
    if (scaled >= 1e6 - 1e-3)
    {
        ++exponent;
        scaled = ScaleByTen(value, 5 - exponent);
    }
    const auto whole = static_cast<std::uint32_t>(scaled);
    const double fraction = scaled - whole;
    if (std::fabs(fraction - 0.5) < nearTie)
    {
        return std::nullopt;
    }
    const std::uint32_t digits = whole + (fraction > 0.5 ? 1 : 0);
    return digits == 1'000'000 ? SixDigits{100'000, exponent + 1} : SixDigits{digits, exponent};
}

// Gives the end.
inline char* WriteExactly(char* text, double value) noexcept
{
    return std::to_chars(text, text + 14, value, std::chars_format::general, 6).ptr;
}

// The exponent with its sign and at least two digits.
inline char* WriteExponent(char* text, int exponent) noexcept
{
    *text++ = 'e';
    *text++ = exponent < 0 ? '-' : '+';
    const int magnitude = exponent < 0 ? -exponent : exponent;
    if (magnitude >= 100)
    {
        *text++ = static_cast<char>('0' + magnitude / 100);
    }
    *text++ = static_cast<char>('0' + magnitude / 10 % 10);
    *text++ = static_cast<char>('0' + magnitude % 10);
    return text;
}

// Without zeros at the end of a fraction; in exponent form below 0.0001 and from 1000000.
inline char* WriteSixDigits(char* text, SixDigits number) noexcept
{
    char digits[6];
    std::uint32_t rest = number.digits;
    for (int place = 5; place >= 0; --place)
    {
        digits[place] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    int count = 6;
    while (digits[count - 1] == '0')
    {
        --count;
    }
    const bool hasExponent = number.exponent < -4 || number.exponent >= 6;
    const int point = hasExponent ? 1 : number.exponent + 1;  // so many digits stand before the point
    if (point <= 0)
    {
        std::memcpy(text, "0.000", 5);
        text += 2 - point;
        std::memcpy(text, digits, 6);
        return text + count;
    }
    std::memcpy(text, digits, 6);
    if (count > point)
    {
        std::memmove(text + point + 1, text + point, 5);
        text[point] = '.';
        text += count + 1;
    }
    else
    {
        text += point;
    }
    return hasExponent ? WriteExponent(text, number.exponent) : text;
}

}  // namespace tvx::detail
