// SPDX-License-Identifier: MIT
#include "Src/EntryOrder.h"

#include <algorithm>
#include <utility>

namespace tvx
{

namespace
{

bool IsLess(const Entry* left, const Entry* right) noexcept
{
    return left->GetKey() < right->GetKey();
}

}  // namespace

std::size_t EntryOrder::CountLess(std::string_view key) const noexcept
{
    Complete();
    const auto* const found =
        std::lower_bound(entries_, entries_ + count_, key,
                         [](const Entry* entry, std::string_view wanted) { return entry->GetKey() < wanted; });
    return static_cast<std::size_t>(found - entries_);
}

void EntryOrder::DestroyAll() noexcept
{
    std::for_each_n(entries_, count_, [](Entry* entry) { std::destroy_at(entry); });
}

void EntryOrder::Widen(std::size_t count)
{
    const auto room = std::max(count, room_ + room_ / 2);
    auto wider = std::make_unique_for_overwrite<Entry*[]>(room);
    std::copy_n(entries_, count_, wider.get());
    entries_ = wider.get();
    room_ = room;
    wide_ = std::move(wider);
}

// Most often they came in order. A few are moved to their places one by one; that saves looking at all the others.
void EntryOrder::MergeAdded() const noexcept
{
    constexpr std::ptrdiff_t few = 16;
    Entry** const end = entries_ + count_;
    Entry** added = entries_ + sorted_;
    sorted_ = count_;
    if (!std::is_sorted(added, end, IsLess))
        std::sort(added, end, IsLess);
    if (added == entries_ || IsLess(added[-1], *added))
        return;
    if (end - added > few)
    {
        std::inplace_merge(entries_, added, end, IsLess);
        return;
    }
    for (; added != end; ++added)
    {
        Entry* const entry = *added;
        Entry** const place = std::upper_bound(entries_, added, entry, IsLess);
        std::move_backward(place, added, added + 1);
        *place = entry;
    }
}

}  // namespace tvx
