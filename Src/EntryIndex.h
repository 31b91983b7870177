// SPDX-License-Identifier: MIT
#pragma once

#include "Src/Entry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace tvx
{

// Entries by the hashes of their keys: a row of places that hold the hash beside the entry, so that no entry is touched that
// is not likely the one looked for, and one access finds both. An entry stands at the first free place from that of its hash
// on. The places of a small map lie in the index itself.
class EntryIndex
{
public:
    EntryIndex() = default;
    EntryIndex(const EntryIndex&) = delete;
    EntryIndex& operator=(const EntryIndex&) = delete;

    // Where the entry with that key stands, or where it would be put; hash is that of the key. A place is right until more
    // room is taken or something is put.
    std::size_t FindPlace(std::string_view key, std::uint32_t hash) const noexcept;

    // Null at a free place.
    Entry* GetAt(std::size_t place) const noexcept
    {
        return places_[place].hash == Free ? nullptr : places_[place].entry;
    }

    // At the place that was found for its key, which is free. There is room for it.
    void PutAt(std::size_t place, Entry* entry) noexcept
    {
        places_[place].hash = entry->GetHash();
        places_[place].entry = entry;
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
    // Packed: else a quarter of the row would be empty. One place in six lies in two lines of the cache.
    struct [[gnu::packed]] Place
    {
        std::uint32_t hash;
        Entry* entry;
    };

    static constexpr std::size_t SmallPlaces = 16;
    static constexpr std::uint32_t Free = 0;  // the hash at a free place

    // An eighth of the places or more stay free, so that searches are short.
    static constexpr std::size_t GetRoom(std::size_t places) noexcept { return places - places / 8; }

    static bool HasKey(const Entry& entry, std::string_view key) noexcept;
    std::size_t FindFreePlace(std::uint32_t hash) const noexcept;
    void Widen(std::size_t count);

    std::size_t mask_ = SmallPlaces - 1;  // a power of two of places
    Place* places_ = smallPlaces_;
    std::unique_ptr<Place[]> widePlaces_;
    Place smallPlaces_[SmallPlaces] = {};
};

// The value is mostly asked for next.
inline bool EntryIndex::HasKey(const Entry& entry, std::string_view key) noexcept
{
    entry.FetchValue();
    return entry.HasKey(key);
}

inline std::size_t EntryIndex::FindPlace(std::string_view key, std::uint32_t hash) const noexcept
{
    std::size_t place = hash & mask_;
    while (places_[place].hash != Free && (places_[place].hash != hash || !HasKey(*places_[place].entry, key)))
        place = (place + 1) & mask_;
    return place;
}

inline std::size_t EntryIndex::FindFreePlace(std::uint32_t hash) const noexcept
{
    std::size_t place = hash & mask_;
    while (places_[place].hash != Free)
        place = (place + 1) & mask_;
    return place;
}

}  // namespace tvx
