// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace tvx
{

// Reverses the three channels of each of count pixels, in place: a, b, c become c, b, a.
using ChannelReversal = void (*)(std::byte* pixels, std::size_t count);

// The fastest reversal that this processor has for elements of 1, 2 or 4 bytes; null for every other size.
ChannelReversal FindChannelReversal(std::int32_t elementSize) noexcept;

// Reverses the order of height rows of stride bytes each, in place, with what this processor does fastest.
void ReverseRows(std::byte* rows, std::size_t stride, std::size_t height) noexcept;

// The same in plain C++, which is what the fast ones have to give.
namespace plain
{

ChannelReversal FindChannelReversal(std::int32_t elementSize) noexcept;
void ReverseRows(std::byte* rows, std::size_t stride, std::size_t height) noexcept;

}  // namespace plain

}  // namespace tvx
