// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/NumberDigits.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

// Decimal numbers with a fraction and an exponent, read to the nearest double. For NumberText.h.
namespace tvx::detail
{

inline double ReadDecimal(const char* text) noexcept
{
    Digits digits(10);
    text = digits.Read(text);
    const std::int64_t exponent = digits.GetExponent() + ReadExponent(text, 'e');
    const std::int64_t magnitude = digits.GetCount() + exponent;  // the number lies just below 10 to this power
    if (digits.GetCount() == 0 || magnitude < -330)
    {
        return 0;
    }
    if (magnitude > 310)
    {
        return std::numeric_limits<double>::infinity();
    }
    double value = 0;
    const char* const end = digits.AppendExponent(exponent);
    if (std::from_chars(digits.Begin(), end, value).ec == std::errc::result_out_of_range)
    {
        return magnitude > 0 ? std::numeric_limits<double>::infinity() : 0;
    }
    return value;
}

}  // namespace tvx::detail
