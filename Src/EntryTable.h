// SPDX-License-Identifier: MIT
#pragma once

#include "Src/EntryIndex.h"
#include "Src/EntryMemory.h"
#include "Src/EntryOrder.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tvx
{

class EntryPlace;

// The entries of a settings map, found by their keys and walked in the byte order of their keys. Entries are never removed;
// they and their keys stay where they are as long as the table. One thread at a time, walking and finding included.
class EntryTable
{
public:
    EntryTable() = default;
    // Entries of its own with the same texts. Throws std::bad_alloc.
    EntryTable(const EntryTable& other);
    EntryTable(EntryTable&& other) = delete;
    EntryTable& operator=(const EntryTable&) = delete;
    EntryTable& operator=(EntryTable&&) = delete;
    ~EntryTable();

    std::size_t GetCount() const noexcept { return order_.GetCount(); }

    // Null when the key is absent.
    const Entry* Find(std::string_view key) const noexcept;

    // Both may be texts of this table. Throws std::bad_alloc, and no entry is changed then.
    void Set(std::string_view key, std::string_view value);

    // Adds what stands from first on and has a key that begins with prefix, without the prefix, up to the first that has
    // none. This table is empty, and first is a place in another one. Throws std::bad_alloc.
    void AddBelow(std::string_view prefix, const EntryPlace& first);

    // The entry that position others come before in the order, or null behind the last.
    const Entry* GetAt(std::size_t position) const noexcept { return order_.GetAt(position); }

    // How many keys are less than key.
    std::size_t CountLess(std::string_view key) const noexcept { return order_.CountLess(key); }

private:
    void Reserve(std::size_t count);
    void AddLast(Entry* entry) noexcept;

    EntryMemory memory_;
    EntryIndex index_;
    EntryOrder order_;
    bool hasOutgrown_ = false;  // whether a value may have an allocation of its own
};

}  // namespace tvx
