// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/NumberCharacters.h"

#include <charconv>
#include <cstdint>

// For NumberText.h.
namespace tvx::detail
{

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

}  // namespace tvx::detail
