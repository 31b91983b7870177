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

// Asks for memory that comes a while after what is worked on now; behind the last pixel that does no harm.
void Prefetch(const void* at, std::size_t distance)
{
    hwy::Prefetch(static_cast<const std::byte*>(at) + distance);
}

// The places 0, 1 and 2 of the channels in their pixels, over three vectors: they fill whole pixels.
template <class Element>
struct Places
{
    static constexpr std::size_t MaxLanes = 64 / sizeof(Element);

    constexpr Places()
    {
        for (std::size_t at = 0; at < 3 * MaxLanes; ++at)
            values[at] = static_cast<Element>(at % 3);
    }

    alignas(64) Element values[3 * MaxLanes];
};

// Which elements of a vector have a place in their pixels.
template <class Tag>
hn::Mask<Tag> FindPlace(Tag tag, const hn::TFromD<Tag>* places, hn::TFromD<Tag> place)
{
    return hn::Eq(hn::LoadU(tag, places), hn::Set(tag, place));
}

// One vector's share of pixels with their channels reversed. What becomes the first channel stands two elements further on, what
// becomes the last one two before; so everything is loaded three times and put together. Elements that are loaded without
// being needed may be of the pixels before and behind.
template <class Tag>
hn::Vec<Tag> GetReversed(Tag tag, const hn::TFromD<Tag>* at, hn::Mask<Tag> isFirst, hn::Mask<Tag> isLast)
{
    const auto lastAndMiddle = hn::IfThenElse(isLast, hn::LoadU(tag, at - 2), hn::LoadU(tag, at));
    return hn::IfThenElse(isFirst, hn::LoadU(tag, at + 2), lastAndMiddle);
}

// Pixels in three vectors at a time, as many as have a pixel on either side within the row; gives their number. All of the next
// ones are loaded before these are stored: the processor waits with a load that overlaps a store just made.
template <class Element>
std::size_t ReverseInside(Element* at, std::size_t count)
{
    const hn::CappedTag<Element, 64 / sizeof(Element)> tag;
    const auto lanes = hn::Lanes(tag);
    if (count <= lanes)
        return 0;
    constexpr Places<Element> places;
    const auto first0 = FindPlace(tag, places.values, 0);
    const auto first1 = FindPlace(tag, places.values + lanes, 0);
    const auto first2 = FindPlace(tag, places.values + 2 * lanes, 0);
    const auto last0 = FindPlace(tag, places.values, 2);
    const auto last1 = FindPlace(tag, places.values + lanes, 2);
    const auto last2 = FindPlace(tag, places.values + 2 * lanes, 2);
    auto vector0 = GetReversed(tag, at, first0, last0);
    auto vector1 = GetReversed(tag, at + lanes, first1, last1);
    auto vector2 = GetReversed(tag, at + 2 * lanes, first2, last2);
    std::size_t done = lanes;
    for (; count - done > lanes; done += lanes, at += 3 * lanes)
    {
        const auto* const next = at + 3 * lanes;
        Prefetch(at, 2048);
        const auto next0 = GetReversed(tag, next, first0, last0);
        const auto next1 = GetReversed(tag, next + lanes, first1, last1);
        const auto next2 = GetReversed(tag, next + 2 * lanes, first2, last2);
        hn::StoreU(vector0, tag, at);
        hn::StoreU(vector1, tag, at + lanes);
        hn::StoreU(vector2, tag, at + 2 * lanes);
        vector0 = next0;
        vector1 = next1;
        vector2 = next2;
    }
    hn::StoreU(vector0, tag, at);
    hn::StoreU(vector1, tag, at + lanes);
    hn::StoreU(vector2, tag, at + 2 * lanes);
    return done;
}

// How many pixels stand before the first one, but not the very first, whose address is that of a whole vector. Where there
// is none, it does not matter.
std::size_t CountToAligned(const std::byte* pixels, std::size_t pixelSize)
{
    constexpr std::size_t alignment = 64;
    for (std::size_t count = 1; count < alignment; ++count)
    {
        if (reinterpret_cast<std::uintptr_t>(pixels + count * pixelSize) % alignment == 0)
            return count;
    }
    return 1;
}

// The pixels at either end are left to the plain kernel.
template <class Element>
void ReverseChannels(std::byte* pixels, std::size_t count)
{
    constexpr auto pixelSize = 3 * sizeof(Element);
    const auto plainly = plain::FindChannelReversal(sizeof(Element));
    const auto wanted = CountToAligned(pixels, pixelSize);
    const auto before = wanted < count ? wanted : count;
    auto* const inside = pixels + before * pixelSize;
    const auto done = ReverseInside(reinterpret_cast<Element*>(inside), count - before);
    plainly(pixels, before);
    plainly(inside + done * pixelSize, count - before - done);
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

// Four vectors of either row in one step, so that much memory is on its way at once.
void SwapRows(std::byte* upper, std::byte* lower, std::size_t size)
{
    const hn::ScalableTag<std::uint8_t> tag;
    const auto lanes = hn::Lanes(tag);
    constexpr std::size_t cacheLine = 64;
    auto* above = reinterpret_cast<std::uint8_t*>(upper);
    auto* below = reinterpret_cast<std::uint8_t*>(lower);
    for (; size >= 4 * lanes; size -= 4 * lanes, above += 4 * lanes, below += 4 * lanes)
    {
        for (std::size_t line = 0; line < 4 * lanes; line += cacheLine)
        {
            Prefetch(above, 1024 + line);
            Prefetch(below, 1024 + line);
        }
        const auto above0 = hn::LoadU(tag, above);
        const auto above1 = hn::LoadU(tag, above + lanes);
        const auto above2 = hn::LoadU(tag, above + 2 * lanes);
        const auto above3 = hn::LoadU(tag, above + 3 * lanes);
        const auto below0 = hn::LoadU(tag, below);
        const auto below1 = hn::LoadU(tag, below + lanes);
        const auto below2 = hn::LoadU(tag, below + 2 * lanes);
        const auto below3 = hn::LoadU(tag, below + 3 * lanes);
        hn::StoreU(below0, tag, above);
        hn::StoreU(below1, tag, above + lanes);
        hn::StoreU(below2, tag, above + 2 * lanes);
        hn::StoreU(below3, tag, above + 3 * lanes);
        hn::StoreU(above0, tag, below);
        hn::StoreU(above1, tag, below + lanes);
        hn::StoreU(above2, tag, below + 2 * lanes);
        hn::StoreU(above3, tag, below + 3 * lanes);
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
