// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/BinaryReading.h"
#include "Helpers/DecimalReading.h"
#include "Helpers/NumberCharacters.h"
#include "Helpers/SixDigits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>

// Numbers as text, the same bytes on every system and under every locale: written as "%d" and "%Lg" write them in the C
// locale, read as atoi and atof read them there. Nothing here allocates, throws or touches errno.
namespace tvx
{

// The text of one number, kept inside the object.
class NumberText
{
public:
    // Decimal, with a minus sign when negative.
    explicit NumberText(std::int32_t value) noexcept;
    // At most six significant digits; further digits are rounded away.
    explicit NumberText(double value) noexcept;

    // The text with a NUL at its end, valid as long as this object.
    const char* Get() const noexcept { return text_; }

    // The number of its bytes, without the NUL.
    std::uint32_t GetLength() const noexcept { return length_; }

private:
    void Close(const char* end) noexcept { length_ = static_cast<std::uint32_t>(end - text_); }
    void SetWord(bool negative, const char* word) noexcept;

    // The longest text is that of -1.23457e-308; the last byte always stays NUL.
    char text_[16] = {};
    std::uint32_t length_ = 0;
};

namespace detail
{

// A number without its sign; nothing when the text doesn't start with one.
inline std::optional<double> ReadUnsigned(const char* text) noexcept
{
    if (StartsWithWord(text, "inf"))
    {
        return std::numeric_limits<double>::infinity();
    }
    if (StartsWithWord(text, "nan"))
    {
        return ReadNan(text + 3);
    }
    if (StartsWithHex(text))
    {
        return ReadHex(text + 2);
    }
    return StartsWithDigits(text, 10) ? std::optional<double>(ReadDecimal(text)) : std::nullopt;
}

}  // namespace detail

inline NumberText::NumberText(std::int32_t value) noexcept
{
    Close(std::to_chars(text_, text_ + sizeof text_ - 1, value).ptr);
}

inline NumberText::NumberText(double value) noexcept
{
    if (!std::isfinite(value))
    {
        SetWord(std::signbit(value), std::isnan(value) ? "nan" : "inf");
        return;
    }
    text_[0] = '-';
    char* const begin = text_ + (std::signbit(value) ? 1 : 0);
    const std::optional<detail::SixDigits> rounded = detail::RoundToSixDigits(std::fabs(value));
    char* const end = rounded ? detail::WriteSixDigits(begin, *rounded) : detail::WriteExactly(begin, std::fabs(value));
    *end = '\0';
    Close(end);
}

inline void NumberText::SetWord(bool negative, const char* word) noexcept
{
    text_[0] = '-';
    char* const begin = text_ + (negative ? 1 : 0);
    std::memcpy(begin, word, 4);
    Close(begin + 3);
}

// Leading white space is skipped, then comes an optional sign, then digits up to the first character that is none; 0
// when there are none. A number beyond 32 bits gives the nearest limit. The text is never null.
inline std::int32_t ReadInt(const char* text) noexcept
{
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t value = detail::ReadWhole(detail::SkipSpace(text));
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

// The nearest double of the number that starts behind leading white space: decimal, hexadecimal behind 0x, inf or nan,
// in any case. 0 when there is none; infinite when it is too large. The text is never null.
inline double ReadDouble(const char* text) noexcept
{
    text = detail::SkipSpace(text);
    const bool negative = *text == '-';
    const std::optional<double> magnitude = detail::ReadUnsigned(text + (detail::StartsWithSign(text) ? 1 : 0));
    if (!magnitude)
    {
        return 0;
    }
    return negative ? -*magnitude : *magnitude;
}

}  // namespace tvx
