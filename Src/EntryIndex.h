// SPDX-License-Identifier: MIT
#pragma once

#include "Src/Entry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace tvx
{

// Entries by the hashes of their keys: two rows of places, the hashes apart from the entries, so that no entry is touched
// that is not likely the one looked for. An entry stands at the first free place from that of its hash on. The places of a
// small map lie in the index itself.
class EntryIndex
{
public:
    // What stands at a free place is never read, and so not set.
    EntryIndex() noexcept {}
    EntryIndex(const EntryIndex&) = delete;
    EntryIndex& operator=(const EntryIndex&) = delete;

    // Where the entry with that key stands, or where it would be put; hash is that of the key. A place is right until more
    // room is taken or something is put.
    std::size_t FindPlace(std::string_view key, std::uint32_t hash) const noexcept;

    // Null at a free place.
    Entry* GetAt(std::size_t place) const noexcept { return hashes_[place] == Free ? nullptr : entries_[place]; }

    // At the place that was found for its key, which is free. There is room for it.
    void PutAt(std::size_t place, Entry* entry) noexcept
    {
        hashes_[place] = entry->GetHash();
        entries_[place] = entry;
    }

    // The same for an entry whose key is known to be absent.
    void Add(Entry* entry) noexcept { PutAt(FindFreePlace(entry->GetHash()), entry); }

    // Room for that many entries in all. Throws std::bad_alloc, and nothing is changed then.
    void Reserve(std::size_t count)
    {
        if (count > GetRoom(mask_ + 1))
            Widen(count);
    }

private:
    static constexpr std::size_t SmallPlaces = 16;
    static constexpr std::uint32_t Free = 0;  // at a free place, in the row of hashes

    // An eighth of the places or more stay free, so that searches are short.
    static constexpr std::size_t GetRoom(std::size_t places) noexcept { return places - places / 8; }

    std::size_t FindFreePlace(std::uint32_t hash) const noexcept;
    void Widen(std::size_t count);

    std::size_t mask_ = SmallPlaces - 1;  // a power of two of places
    std::uint32_t* hashes_ = smallHashes_;
    Entry** entries_ = smallEntries_;
    std::unique_ptr<std::uint32_t[]> wideHashes_;
    std::unique_ptr<Entry*[]> wideEntries_;
    std::uint32_t smallHashes_[SmallPlaces] = {};
    Entry* smallEntries_[SmallPlaces];
};

inline std::size_t EntryIndex::FindPlace(std::string_view key, std::uint32_t hash) const noexcept
{
    std::size_t place = hash & mask_;
    while (hashes_[place] != Free && (hashes_[place] != hash || !entries_[place]->HasKey(key)))
        place = (place + 1) & mask_;
    return place;
}

inline std::size_t EntryIndex::FindFreePlace(std::uint32_t hash) const noexcept
{
    std::size_t place = hash & mask_;
    while (hashes_[place] != Free)
        place = (place + 1) & mask_;
    return place;
}

}  // namespace tvx
