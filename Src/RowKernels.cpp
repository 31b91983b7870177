// SPDX-License-Identifier: MIT
#include "Src/RowKernels.h"

// This file is compiled once for each processor generation: the library includes it again.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Src/RowKernels.cpp"
#include <hwy/cache_control.h>
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();

namespace tvx::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// So many bytes ahead memory is asked for while vectors are turned; behind the last pixel that does no harm.
constexpr std::size_t PrefetchDistance = 2048;

// The rest that fills no vector is left to the plain kernel.
template <class Element>
void ReverseChannels(std::byte* pixels, std::size_t count)
{
    const hn::ScalableTag<Element> tag;
    const auto lanes = hn::Lanes(tag);
    auto* at = reinterpret_cast<Element*>(pixels);
    for (; count >= lanes; count -= lanes, at += 3 * lanes)
    {
        hwy::Prefetch(reinterpret_cast<const std::byte*>(at) + PrefetchDistance);
        hn::Vec<decltype(tag)> first, second, third;
        hn::LoadInterleaved3(tag, at, first, second, third);
        hn::StoreInterleaved3(third, second, first, tag, at);
    }
    plain::FindChannelReversal(sizeof(Element))(reinterpret_cast<std::byte*>(at), count);
}

void ReverseBytes(std::byte* pixels, std::size_t count)
{
    ReverseChannels<std::uint8_t>(pixels, count);
}

void ReverseWords(std::byte* pixels, std::size_t count)
{
    ReverseChannels<std::uint16_t>(pixels, count);
}

void ReverseDoubleWords(std::byte* pixels, std::size_t count)
{
    ReverseChannels<std::uint32_t>(pixels, count);
}

void SwapRows(std::byte* upper, std::byte* lower, std::size_t size)
{
    const hn::ScalableTag<std::uint8_t> tag;
    const auto lanes = hn::Lanes(tag);
    auto* above = reinterpret_cast<std::uint8_t*>(upper);
    auto* below = reinterpret_cast<std::uint8_t*>(lower);
    for (; size >= lanes; size -= lanes, above += lanes, below += lanes)
    {
        const auto kept = hn::LoadU(tag, above);
        hn::StoreU(hn::LoadU(tag, below), tag, above);
        hn::StoreU(kept, tag, below);
    }
    // No function of the library's own: it would be compiled for this processor and could be taken by code for every other.
    for (; size > 0; --size, ++above, ++below)
    {
        const auto kept = *above;
        *above = *below;
        *below = kept;
    }
}

}  // namespace tvx::HWY_NAMESPACE

HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace tvx
{

namespace
{

HWY_EXPORT(ReverseBytes);
HWY_EXPORT(ReverseWords);
HWY_EXPORT(ReverseDoubleWords);
HWY_EXPORT(SwapRows);

}  // namespace

ChannelReversal FindChannelReversal(std::int32_t elementSize) noexcept
{
    switch (elementSize)
    {
    case 1: return [](std::byte* pixels, std::size_t count) { HWY_DYNAMIC_DISPATCH(ReverseBytes)(pixels, count); };
    case 2: return [](std::byte* pixels, std::size_t count) { HWY_DYNAMIC_DISPATCH(ReverseWords)(pixels, count); };
    case 4:
        return [](std::byte* pixels, std::size_t count) { HWY_DYNAMIC_DISPATCH(ReverseDoubleWords)(pixels, count); };
    default: return nullptr;
    }
}

void ReverseRows(std::byte* rows, std::size_t stride, std::size_t height) noexcept
{
    for (std::size_t upper = 0, lower = height; upper + 1 < lower; ++upper)
    {
        --lower;
        HWY_DYNAMIC_DISPATCH(SwapRows)(rows + upper * stride, rows + lower * stride, stride);
    }
}

}  // namespace tvx

#endif
