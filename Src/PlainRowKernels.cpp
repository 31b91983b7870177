// SPDX-License-Identifier: MIT
#include "Src/RowKernels.h"

#include <algorithm>

namespace tvx::plain
{

namespace
{

// Byte by byte: pixels stand wherever they stand.
template <std::size_t ElementSize>
void ReverseChannels(std::byte* pixels, std::size_t count)
{
    for (; count > 0; --count, pixels += 3 * ElementSize)
        std::swap_ranges(pixels, pixels + ElementSize, pixels + 2 * ElementSize);
}

}  // namespace

ChannelReversal FindChannelReversal(std::int32_t elementSize) noexcept
{
    switch (elementSize)
    {
    case 1: return &ReverseChannels<1>;
    case 2: return &ReverseChannels<2>;
    case 4: return &ReverseChannels<4>;
    default: return nullptr;
    }
}

void ReverseRows(std::byte* rows, std::size_t stride, std::size_t height) noexcept
{
    for (std::size_t upper = 0, lower = height; upper + 1 < lower; ++upper)
    {
        --lower;
        std::swap_ranges(rows + upper * stride, rows + (upper + 1) * stride, rows + lower * stride);
    }
}

}  // namespace tvx::plain
