// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

namespace tvx::check
{

using IntLimits = std::numeric_limits<std::int32_t>;
using DoubleLimits = std::numeric_limits<double>;

// A number and the text that it is written as or read from.
template <class Number>
struct NumberRow
{
    Number number;
    const char* text;
};

}  // namespace tvx::check
