// SPDX-License-Identifier: MIT
#include "Src/ItemChunks.h"

#include "Src/ItemScan.h"

#include <algorithm>
#include <utility>

namespace tvx
{

namespace
{

constexpr std::size_t Half = ItemChunks::ChunkSize / 2;

}  // namespace

ItemChunks::~ItemChunks()
{
    const auto chunks = std::exchange(chunks_, {});
    size_ = 0;
    recent_.store(0, std::memory_order_relaxed);
    for (const auto& chunk : chunks)
    {
        for (IObject* const item : chunk)
            Ref<IObject>::Adopt(item);
    }
}

void ItemChunks::PutIn(std::size_t index, IObject* item)
{
    const auto place = MakeRoom(index);
    chunks_[place.chunk].Insert(place.offset, item);
    ++size_;
    ShiftStarts(place.chunk, 1);
}

Ref<IObject> ItemChunks::Take(std::size_t index) noexcept
{
    const auto place = FindPlace(index);
    auto taken = Ref<IObject>::Adopt(chunks_[place.chunk].Take(place.offset));
    --size_;
    ShiftStarts(place.chunk, static_cast<std::size_t>(-1));
    Tidy(place.chunk);
    return taken;
}

// Room is made at the target where memory allows it; else the chunks between pass items on, which needs none.
void ItemChunks::Move(std::size_t from, std::size_t to) noexcept
{
    if (const auto chunk = FindChunk(from); chunk == FindChunk(to))
        return chunks_[chunk].Move(from - starts_[chunk], to - starts_[chunk]);
    if (chunks_[FindChunk(to)].IsFull())
        TrySplit(FindChunk(to));
    const auto source = FindPlace(from);
    const auto target = FindPlace(to);
    IObject* const moved = chunks_[source.chunk].Take(source.offset);
    if (from < to)
        PutInFromBelow({target.chunk, target.offset + 1}, moved);
    else
        PutInFromAbove(target, moved);
    Renumber(std::min(source.chunk, target.chunk), std::max(source.chunk, target.chunk));
    Tidy(source.chunk);
}

std::size_t ItemChunks::Find(const IObject* item) const noexcept
{
    for (std::size_t chunk = 0; chunk < chunks_.size(); ++chunk)
    {
        const auto& items = chunks_[chunk];
        const auto offset = FindItem(items.begin(), items.GetSize(), item);
        if (offset < items.GetSize())
            return starts_[chunk] + offset;
    }
    return size_;
}

std::size_t ItemChunks::FindInLooseChunks(std::size_t index) const noexcept
{
    const auto recent = recent_.load(std::memory_order_relaxed);
    if (Holds(recent, index))
        return recent;
    const auto begin = starts_.begin();
    const auto behind = std::upper_bound(begin + static_cast<std::ptrdiff_t>(index / ChunkSize),
                                         begin + static_cast<std::ptrdiff_t>(chunks_.size()), index);
    const auto chunk = static_cast<std::size_t>(behind - begin) - 1;
    recent_.store(chunk, std::memory_order_relaxed);
    return chunk;
}

// Behind the last item is the end of the last chunk.
ItemChunks::Place ItemChunks::FindPlace(std::size_t index) const noexcept
{
    const auto chunk = index == size_ ? chunks_.size() - 1 : FindChunk(index);
    return {chunk, index - starts_[chunk]};
}

// Where an item can be put so that it stands at index. A list that grows at its end gets full chunks.
ItemChunks::Place ItemChunks::MakeRoom(std::size_t index)
{
    if (chunks_.empty())
        AddChunk(0, {});
    const auto place = FindPlace(index);
    auto& items = chunks_[place.chunk];
    if (items.IsFull())
    {
        index < size_ ? Split(place.chunk) : AddChunk(chunks_.size(), MakeChunk());
        return FindPlace(index);
    }
    if (!items.HasRoom())
        items.Grow();
    return place;
}

ItemChunk ItemChunks::MakeChunk()
{
    ItemChunk made;
    made.Reserve(ChunkSize);
    return made;
}

// What can fail comes first, and leaves nothing behind but memory for a number.
void ItemChunks::AddChunk(std::size_t place, ItemChunk added)
{
    starts_.resize(chunks_.size() + 1);
    chunks_.insert(chunks_.begin() + static_cast<std::ptrdiff_t>(place), std::move(added));
    Renumber(place == 0 ? 0 : place - 1, chunks_.size() - 1);
}

void ItemChunks::Split(std::size_t chunk)
{
    auto upper = MakeChunk();
    upper.AppendFrom(chunks_[chunk], Half);
    AddChunk(chunk + 1, std::move(upper));
    chunks_[chunk].Shorten(Half);
    Renumber(chunk, chunks_.size() - 1);
}

void ItemChunks::TrySplit(std::size_t chunk) noexcept
try
{
    Split(chunk);
}
catch (...)  // want of memory: the chunk stays as it is
{
}

// Keeps the chunks few: one that has become small goes into a neighbour, so far that both are not full again soon.
void ItemChunks::Tidy(std::size_t chunk) noexcept
{
    if (chunks_[chunk].GetSize() > ChunkSize / 4)
        return;
    if (chunk + 1 < chunks_.size())
        JoinWithNext(chunk);
    if (chunk > 0)
        JoinWithNext(chunk - 1);
}

void ItemChunks::JoinWithNext(std::size_t chunk) noexcept
{
    auto& lower = chunks_[chunk];
    const auto& upper = chunks_[chunk + 1];
    if (!lower.IsEmpty() && !upper.IsEmpty() && lower.GetSize() + upper.GetSize() > Half)
        return;
    lower.AppendFrom(upper, 0);
    const auto next = static_cast<std::ptrdiff_t>(chunk) + 1;
    chunks_.erase(chunks_.begin() + next);
    starts_.erase(starts_.begin() + next);
    recent_.store(0, std::memory_order_relaxed);
}

// The item comes out of a chunk below, which has room now: full chunks give their first item on to the one below.
void ItemChunks::PutInFromBelow(Place place, IObject* item) noexcept
{
    while (chunks_[place.chunk].IsFull())
    {
        auto& items = chunks_[place.chunk];
        IObject* const first = items.Take(0);
        items.Insert(place.offset - 1, std::exchange(item, first));
        place = {place.chunk - 1, chunks_[place.chunk - 1].GetSize()};
    }
    chunks_[place.chunk].Insert(place.offset, item);
}

// The item comes out of a chunk above, which has room now: full chunks give their last item on to the one above.
void ItemChunks::PutInFromAbove(Place place, IObject* item) noexcept
{
    while (chunks_[place.chunk].IsFull())
    {
        auto& items = chunks_[place.chunk];
        IObject* const last = items.Take(ChunkSize - 1);
        items.Insert(place.offset, std::exchange(item, last));
        place = {place.chunk + 1, 0};
    }
    chunks_[place.chunk].Insert(place.offset, item);
}

// One item more or less in chunk moves all behind it.
void ItemChunks::ShiftStarts(std::size_t chunk, std::size_t by) noexcept
{
    auto* const starts = starts_.data();
    const auto count = chunks_.size();
    for (auto behind = chunk + 1; behind < count; ++behind)
        starts[behind] += by;
}

// The numbers of the chunks from first to last, by what stands before.
void ItemChunks::Renumber(std::size_t first, std::size_t last) noexcept
{
    for (auto chunk = first; chunk <= last; ++chunk)
        starts_[chunk] = chunk == 0 ? 0 : starts_[chunk - 1] + chunks_[chunk - 1].GetSize();
}

}  // namespace tvx
