// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/EqualBytes.h"
#include "Src/EntryMemory.h"

#include <hwy/cache_control.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tvx
{

// A key and its value. Never moves; behind it lie the key's text and the first place of the value, in one piece of memory.
// A value that outgrows its place gets an allocation of its own, which the entry owns.
class Entry
{
public:
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    // Frees the place of a value that has outgrown its first one, and does nothing else.
    ~Entry();

    // Makes an entry in memory, which outlives it, with copies of both texts. Throws std::bad_alloc.
    static Entry* Make(EntryMemory& memory, std::string_view key, std::uint32_t hash, std::string_view value);

    // The same with the texts of another entry.
    static Entry* MakeCopy(EntryMemory& memory, const Entry& other);

    // Texts with a NUL at their end: the key's as long as the entry, the value's until it is assigned again.
    std::string_view GetKey() const noexcept { return {GetKeyText(), keyLength_}; }
    std::string_view GetValue() const noexcept { return {value_, valueLength_}; }
    const char* GetKeyText() const noexcept { return reinterpret_cast<const char*>(this + 1); }
    const char* GetValueText() const noexcept { return value_; }

    std::uint32_t GetHash() const noexcept { return hash_; }

    bool HasKey(std::string_view key) const noexcept
    {
        return key.size() == keyLength_ && EqualBytes(key.data(), GetKeyText(), keyLength_);
    }

    // Whether a value fits without an allocation.
    bool HasRoomFor(std::string_view value) const noexcept { return value.size() <= valueRoom_; }

    // The value may be a part of the one before. Throws std::bad_alloc, and nothing is changed then.
    void SetValue(std::string_view value);

    // Starts to fetch its memory: where it begins, and where most values lie.
    void Fetch() const noexcept
    {
        hwy::Prefetch(this);
        FetchValue();
    }

    // The same for who reads its beginning at once.
    void FetchValue() const noexcept { hwy::Prefetch(GetKeyText() + 24); }

private:
    // The texts are put behind it by who makes it.
    Entry(std::uint32_t hash, std::size_t keyLength, std::size_t valueLength, std::size_t valueRoom) noexcept;

    char* GetTexts() noexcept { return reinterpret_cast<char*>(this + 1); }
    bool HasOutgrown() const noexcept { return value_ != GetKeyText() + keyLength_ + 1; }
    void PutValue(std::string_view value) noexcept;
    void Outgrow(std::string_view value);

    char* value_;
    std::uint32_t hash_;
    std::uint32_t keyLength_;
    std::uint32_t valueLength_;
    std::uint32_t valueRoom_;  // the longest value that fits
};

}  // namespace tvx
