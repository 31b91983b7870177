// SPDX-License-Identifier: MIT
#pragma once

#include "Src/Entry.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace tvx
{

// Entries in the byte order of their keys. Those of a small map are listed in the object itself.
//
// The order is completed only when somebody asks for it: entries that came since lie unsorted behind the sorted ones, so
// that adding many costs no searching. Completing it takes no memory and cannot fail.
class EntryOrder
{
public:
    // What stands behind the last entry is never read, and so not set.
    EntryOrder() noexcept {}
    EntryOrder(const EntryOrder&) = delete;
    EntryOrder& operator=(const EntryOrder&) = delete;

    std::size_t GetCount() const noexcept { return count_; }

    // Room for that many entries in all. Throws std::bad_alloc, and nothing is changed then.
    void Reserve(std::size_t count)
    {
        if (count > room_)
            Widen(count);
    }

    // For an entry whose key is not among the others. There is room for it.
    void Add(Entry* entry) noexcept { entries_[count_++] = entry; }

    // The same when its key is greater than all others, which are in order.
    void AddLast(Entry* entry) noexcept
    {
        Add(entry);
        sorted_ = count_;
    }

    // The entry that position others come before, or null behind the last.
    const Entry* GetAt(std::size_t position) const noexcept;

    // How many keys are less than key.
    std::size_t CountLess(std::string_view key) const noexcept;

    // Destroys the entries; nothing may be asked for any more.
    void DestroyAll() noexcept;

private:
    static constexpr std::size_t SmallRoom = 14;

    void Widen(std::size_t count);
    void MergeAdded() const noexcept;

    void Complete() const noexcept
    {
        if (sorted_ != count_)
            MergeAdded();
    }

    Entry** entries_ = small_;
    std::size_t count_ = 0;
    std::size_t room_ = SmallRoom;
    mutable std::size_t sorted_ = 0;  // so many are in order; completing it is not to be seen from outside
    std::unique_ptr<Entry*[]> wide_;
    Entry* small_[SmallRoom];
};

// Who walks will want the entries ahead; fetching them early costs less than waiting for each.
inline const Entry* EntryOrder::GetAt(std::size_t position) const noexcept
{
    constexpr std::size_t ahead = 8;
    Complete();
    if (position + ahead < count_)
        entries_[position + ahead]->Fetch();
    return position < count_ ? entries_[position] : nullptr;
}

}  // namespace tvx
