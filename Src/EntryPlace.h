// SPDX-License-Identifier: MIT
#pragma once

#include "Src/EntryTable.h"

#include <cstddef>
#include <string_view>

namespace tvx
{

// A place in the order of a table, which outlives it: on an entry, where it stays while others are added, or at the end for
// good.
class EntryPlace
{
public:
    explicit EntryPlace(const EntryTable& table) noexcept : table_(table) { MoveTo(0); }

    const EntryTable& GetTable() const noexcept { return table_; }

    // Null at the end.
    const Entry* Get() const noexcept { return entry_; }

    // Not at the end.
    void MoveOn() noexcept
    {
        if (count_ != table_.GetCount())
            position_ = table_.CountLess(entry_->GetKey());
        MoveTo(position_ + 1);
    }

    // Moves on to the first entry whose key is not less than key; stays when it has come as far.
    void Seek(std::string_view key) noexcept
    {
        if (entry_ != nullptr && entry_->GetKey() < key)
            MoveTo(table_.CountLess(key));
    }

private:
    void MoveTo(std::size_t position) noexcept
    {
        position_ = position;
        entry_ = table_.GetAt(position);
        count_ = table_.GetCount();
    }

    const EntryTable& table_;
    const Entry* entry_ = nullptr;
    std::size_t position_ = 0;
    std::size_t count_ = 0;  // of the table when the position was right: entries come, but never go
};

}  // namespace tvx
