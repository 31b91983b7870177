// SPDX-License-Identifier: MIT
#include "Src/EntryTable.h"

#include "Src/EntryPlace.h"
#include "Src/KeyHash.h"

namespace tvx
{

EntryTable::EntryTable(const EntryTable& other)
{
    if (other.GetCount() == 0)
        return;
    Reserve(other.GetCount());
    memory_.Reserve(other.memory_.GetUsed());
    for (std::size_t position = 0; position < other.GetCount(); ++position)
        AddLast(Entry::MakeCopy(memory_, *other.GetAt(position)));
}

// What entries have in the blocks of the table goes with those.
EntryTable::~EntryTable()
{
    if (hasOutgrown_)
        order_.DestroyAll();
}

const Entry* EntryTable::Find(std::string_view key) const noexcept
{
    return index_.GetAt(index_.FindPlace(key, HashKey(key)));
}

void EntryTable::Set(std::string_view key, std::string_view value)
{
    const auto hash = HashKey(key);
    if (Entry* const present = index_.GetAt(index_.FindPlace(key, hash)))
    {
        hasOutgrown_ = hasOutgrown_ || !present->HasRoomFor(value);
        return present->SetValue(value);
    }
    Reserve(GetCount() + 1);
    Entry* const made = Entry::Make(memory_, key, hash, value);
    index_.Add(made);
    order_.Add(made);
}

// Room is taken for that many entries of the average size of the other table's.
void EntryTable::AddBelow(std::string_view prefix, const EntryPlace& first)
{
    const auto isBelow = [prefix](const EntryPlace& place)
    { return place.Get() != nullptr && place.Get()->GetKey().starts_with(prefix); };
    std::size_t count = 0;
    for (EntryPlace place = first; isBelow(place); place.MoveOn())
        ++count;
    if (count == 0)
        return;
    const auto& other = first.GetTable();
    Reserve(count);
    memory_.Reserve(EntryMemory::RoundUp(other.memory_.GetUsed() / other.GetCount() * count));
    for (EntryPlace place = first; isBelow(place); place.MoveOn())
    {
        const auto key = place.Get()->GetKey().substr(prefix.size());
        AddLast(Entry::Make(memory_, key, HashKey(key), place.Get()->GetValue()));
    }
}

// Room for that many in all that there is besides entries.
void EntryTable::Reserve(std::size_t count)
{
    index_.Reserve(count);
    order_.Reserve(count);
}

// Its key is greater than all others, and there is room for it.
void EntryTable::AddLast(Entry* entry) noexcept
{
    index_.Add(entry);
    order_.AddLast(entry);
}

}  // namespace tvx
