// SPDX-License-Identifier: MIT
#include "Src/Entry.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

namespace tvx
{

namespace
{

// Every number and most words fit into the first place of a value, also when a longer one is written later.
constexpr std::size_t SmallestRoom = 15;

static_assert(EntryMemory::RoundUp(1) % alignof(Entry) == 0, "entries lie side by side");

// What 32 bits cannot count, with some bytes beside it, is taken as more than memory holds.
constexpr std::size_t MostLength = std::numeric_limits<std::uint32_t>::max() - 256;

void RequireLength(std::string_view text)
{
    if (text.size() > MostLength)
        throw std::bad_alloc();
}

// A value that has become longer once may become so again, so that its place is doubled; not beyond this.
constexpr std::size_t MostSpared = std::size_t{1024} * 1024;

// The text may lie where it is put.
void PutText(char* place, std::string_view text) noexcept
{
    std::memmove(place, text.data(), text.size());
    place[text.size()] = '\0';
}

}  // namespace

Entry::Entry(std::uint32_t hash, std::size_t keyLength, std::size_t valueLength, std::size_t valueRoom) noexcept
    : value_(GetTexts() + keyLength + 1),
      hash_(hash),
      keyLength_(static_cast<std::uint32_t>(keyLength)),
      valueLength_(static_cast<std::uint32_t>(valueLength)),
      valueRoom_(static_cast<std::uint32_t>(valueRoom))
{
}

Entry::~Entry()
{
    if (HasOutgrown())
        delete[] value_;
}

Entry* Entry::Make(EntryMemory& memory, std::string_view key, std::uint32_t hash, std::string_view value)
{
    RequireLength(key);
    RequireLength(value);
    const auto withoutRoom = sizeof(Entry) + key.size() + 2;
    const auto size = EntryMemory::RoundUp(withoutRoom + std::max(value.size(), SmallestRoom));
    auto* const made = new (memory.Allocate(size)) Entry(hash, key.size(), value.size(), size - withoutRoom);
    PutText(made->GetTexts(), key);
    PutText(made->value_, value);
    return made;
}

Entry* Entry::MakeCopy(EntryMemory& memory, const Entry& other)
{
    if (other.HasOutgrown())
        return Make(memory, other.GetKey(), other.hash_, other.GetValue());
    const auto size = sizeof(Entry) + other.keyLength_ + 2 + other.valueRoom_;
    void* const place = memory.Allocate(size);
    auto* const made = new (place) Entry(other.hash_, other.keyLength_, other.valueLength_, other.valueRoom_);
    std::memcpy(made->GetTexts(), other.GetKeyText(), size - sizeof(Entry));
    return made;
}

void Entry::SetValue(std::string_view value)
{
    if (HasRoomFor(value))
        PutValue(value);
    else
        Outgrow(value);
}

void Entry::PutValue(std::string_view value) noexcept
{
    PutText(value_, value);
    valueLength_ = static_cast<std::uint32_t>(value.size());
}

// The value before, of which the new one may be a part, goes last.
void Entry::Outgrow(std::string_view value)
{
    RequireLength(value);
    const auto room = std::max(value.size(), std::min(std::size_t{2} * valueRoom_, MostSpared));
    auto place = std::make_unique_for_overwrite<char[]>(room + 1);
    const std::unique_ptr<char[]> before(HasOutgrown() ? value_ : nullptr);
    value_ = place.release();
    valueRoom_ = static_cast<std::uint32_t>(room);
    PutValue(value);
}

}  // namespace tvx
