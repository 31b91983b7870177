// SPDX-License-Identifier: MIT
#include "Src/ItemScan.h"

#include <algorithm>
#include <cstdint>
#include <type_traits>

// This file is compiled once for each processor generation: the library includes it again.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Src/ItemScan.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();

namespace tvx::HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

// A pointer as the vectors know it.
using Word = std::conditional_t<sizeof(void*) == sizeof(std::uint64_t), std::uint64_t, std::uint32_t>;

// Four vectors at a time are only asked whether the item is in one of them; where, and what fills no four vectors, is left to
// the plain scan.
std::size_t FindItem(const IObject* const* items, std::size_t count, const IObject* item)
{
    const hn::ScalableTag<Word> tag;
    const auto lanes = hn::Lanes(tag);
    const auto wanted = hn::Set(tag, reinterpret_cast<Word>(item));
    const auto* const words = reinterpret_cast<const Word*>(items);
    std::size_t at = 0;
    for (; count - at >= 4 * lanes; at += 4 * lanes)
    {
        const auto first = hn::Eq(hn::LoadU(tag, words + at), wanted);
        const auto second = hn::Eq(hn::LoadU(tag, words + at + lanes), wanted);
        const auto third = hn::Eq(hn::LoadU(tag, words + at + 2 * lanes), wanted);
        const auto fourth = hn::Eq(hn::LoadU(tag, words + at + 3 * lanes), wanted);
        if (!hn::AllFalse(tag, hn::Or(hn::Or(first, second), hn::Or(third, fourth))))
            break;
    }
    return at + plain::FindItem(items + at, count - at, item);
}

}  // namespace tvx::HWY_NAMESPACE

HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace tvx
{

HWY_EXPORT(FindItem);

std::size_t FindItem(const IObject* const* items, std::size_t count, const IObject* item) noexcept
{
    return HWY_DYNAMIC_DISPATCH(FindItem)(items, count, item);
}

std::size_t plain::FindItem(const IObject* const* items, std::size_t count, const IObject* item) noexcept
{
    return static_cast<std::size_t>(std::find(items, items + count, item) - items);
}

}  // namespace tvx

#endif
