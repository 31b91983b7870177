// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/Ref.h"
#include "Src/ItemChunk.h"

#include <atomic>
#include <cstddef>
#include <vector>

namespace tvx
{

// A growable list that holds one reference on each item, which may be null. The items stand as plain pointers in chunks of
// limited size: what is inserted or taken somewhere in a long list shifts the items of its chunk, without touching their
// counts, and the numbers of the chunks behind it.
//
// One thread at a time; several may read it at once.
class ItemChunks
{
public:
    // The most items of a chunk.
    static constexpr std::size_t ChunkSize = ItemChunk::MaxSize;

    ItemChunks() = default;
    ItemChunks(const ItemChunks&) = delete;
    ItemChunks& operator=(const ItemChunks&) = delete;

    // Empty first: an item that dies now may look in here.
    ~ItemChunks();

    // The number of items.
    std::size_t GetSize() const noexcept { return size_; }

    // Borrowed. index is below the size.
    IObject* Get(std::size_t index) const noexcept
    {
        const auto chunk = FindChunk(index);
        return chunks_[chunk][index - starts_[chunk]];
    }

    // Puts item at the end. Throws std::bad_alloc, holding what it held, when memory is exhausted.
    void Append(IObject* item)
    {
        if (HasRoomAtEnd())
            PutAtEnd(item);
        else
            PutIn(size_, item);
        Ref<IObject>(item).Detach();
    }

    // Puts item at index, which is at most the size. Throws as Append.
    void Insert(std::size_t index, IObject* item)
    {
        PutIn(index, item);
        Ref<IObject>(item).Detach();
    }

    // Closes the gap and gives the item's reference to the caller. index is below the size.
    Ref<IObject> Take(std::size_t index) noexcept;

    // Moves the item at from to where it then stands at to; those between shift by one. Both are below the size.
    void Move(std::size_t from, std::size_t to) noexcept;

    // The first index of item, or the size when it is not there.
    std::size_t Find(const IObject* item) const noexcept;

private:
    struct Place
    {
        std::size_t chunk;
        std::size_t offset;
    };

    // The chunk of the item at index. In a list that grew at its end all chunks are full, so that the index tells the chunk;
    // in others it stands there or behind, and mostly where the last one was found.
    std::size_t FindChunk(std::size_t index) const noexcept
    {
        const auto full = index / ChunkSize;
        return Holds(full, index) ? full : FindInLooseChunks(index);
    }

    bool Holds(std::size_t chunk, std::size_t index) const noexcept
    {
        return index - starts_[chunk] < chunks_[chunk].GetSize();
    }

    std::size_t FindInLooseChunks(std::size_t index) const noexcept;

    bool HasRoomAtEnd() const noexcept { return !chunks_.empty() && chunks_.back().HasRoom(); }

    void PutAtEnd(IObject* item) noexcept
    {
        chunks_.back().Append(item);
        ++size_;
    }

    void PutIn(std::size_t index, IObject* item);
    Place FindPlace(std::size_t index) const noexcept;
    Place MakeRoom(std::size_t index);
    static ItemChunk MakeChunk();
    void AddChunk(std::size_t place, ItemChunk added);
    void Split(std::size_t chunk);
    void TrySplit(std::size_t chunk) noexcept;
    void Tidy(std::size_t chunk) noexcept;
    void JoinWithNext(std::size_t chunk) noexcept;
    void PutInFromBelow(Place place, IObject* item) noexcept;
    void PutInFromAbove(Place place, IObject* item) noexcept;
    void ShiftStarts(std::size_t chunk, std::size_t by) noexcept;
    void Renumber(std::size_t first, std::size_t last) noexcept;

    // As soon as there are two, each has room for ChunkSize items, and none is empty.
    std::vector<ItemChunk> chunks_;
    std::vector<std::size_t> starts_;  // the index of the first item of each chunk; may be longer than chunks_
    std::size_t size_ = 0;
    mutable std::atomic<std::size_t> recent_{0};  // where the next index is looked for first; 0 or a chunk
};

}  // namespace tvx
