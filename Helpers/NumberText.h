// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <system_error>

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

inline bool IsDecimalDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
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

// Sign and digits; 0 when there are none. Stops growing far beyond every 32-bit number and every length of a text.
inline std::int64_t ReadWhole(const char* text) noexcept
{
    constexpr std::int64_t limit = 100'000'000'000'000'000;
    const bool negative = *text == '-';
    std::int64_t value = 0;
    for (text += StartsWithSign(text) ? 1 : 0; IsDecimalDigit(*text); ++text)
    {
        value = std::min(value * 10 + (*text - '0'), limit);
    }
    return negative ? -value : value;
}

// The digits of a number in one base, from the first that is not 0: the whole number they form times base to the power
// of exponent. Keeps as many as can decide how a double is rounded (768); one digit stands for all behind them.
class Digits
{
public:
    explicit Digits(int base) noexcept : base_(base) {}

    // Gives the place behind the digits.
    const char* Read(const char* text) noexcept;

    // The digits with a decimal exponent behind them; gives the end.
    char* AppendExponent(std::int64_t exponent) noexcept;

    const char* Begin() const noexcept { return digits_; }
    const char* End() const noexcept { return digits_ + count_; }
    std::int64_t GetCount() const noexcept { return count_; }
    std::int64_t GetExponent() const noexcept { return exponent_; }

private:
    const char* ReadRun(const char* text, bool isFraction) noexcept;
    void Add(char digit, bool isFraction) noexcept;

    static constexpr int Kept = 780;
    static constexpr int RoomBehind = 20;

    const int base_;
    int count_ = 0;
    std::int64_t exponent_ = 0;
    bool isRestNonzero_ = false;
    char digits_[Kept + RoomBehind];  // only what was read is ever set
};

inline const char* Digits::Read(const char* text) noexcept
{
    text = ReadRun(text, false);
    text = *text == '.' ? ReadRun(text + 1, true) : text;
    if (isRestNonzero_)
    {
        digits_[count_++] = '1';
        --exponent_;
    }
    return text;
}

inline char* Digits::AppendExponent(std::int64_t exponent) noexcept
{
    char* const end = digits_ + count_;
    *end = 'e';
    return std::to_chars(end + 1, digits_ + sizeof digits_, exponent).ptr;
}

inline const char* Digits::ReadRun(const char* text, bool isFraction) noexcept
{
    for (; IsDigit(*text, base_); ++text)
    {
        Add(*text, isFraction);
    }
    return text;
}

inline void Digits::Add(char digit, bool isFraction) noexcept
{
    const bool isLeadingZero = digit == '0' && count_ == 0;
    const bool isDropped = count_ == Kept;
    if (!isLeadingZero && !isDropped)
    {
        digits_[count_++] = digit;
    }
    isRestNonzero_ = isRestNonzero_ || (isDropped && digit != '0');
    exponent_ += (isDropped ? 1 : 0) - (isFraction ? 1 : 0);
}

// What the exponent behind mark says; a malformed one counts as not there.
inline std::int64_t ReadExponent(const char* text, char mark) noexcept
{
    return ToLower(*text) == mark ? ReadWhole(text + 1) : 0;
}

inline double DoubleOfBits(std::uint64_t bits) noexcept
{
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

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
    if (std::isfinite(value))
    {
        Close(std::to_chars(text_, text_ + sizeof text_ - 1, value, std::chars_format::general, 6).ptr);
        return;
    }
    SetWord(std::signbit(value), std::isnan(value) ? "nan" : "inf");
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
