// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace tvx
{

// Memory for entries, in blocks that are given back all at once, on destruction. The first has room for a small map, and
// later ones grow with what there is, so that few allocations are made and little is left over.
class EntryMemory
{
public:
    EntryMemory() = default;
    EntryMemory(const EntryMemory&) = delete;
    EntryMemory& operator=(const EntryMemory&) = delete;
    ~EntryMemory();

    // The size that pieces come in.
    static constexpr std::size_t RoundUp(std::size_t size) noexcept { return (size + Unit - 1) / Unit * Unit; }

    // A piece as long as this memory; size is one that pieces come in. Throws std::bad_alloc, and nothing is changed then.
    void* Allocate(std::size_t size);

    // Begins a block of that many bytes, for pieces that are to follow. Throws std::bad_alloc, and nothing is changed then.
    void Reserve(std::size_t size);

    // The bytes of all pieces.
    std::size_t GetUsed() const noexcept { return total_ - left_; }

private:
    struct Block
    {
        Block* before;
    };

    static constexpr std::size_t Unit = alignof(Block);

    void ReserveMore(std::size_t size);

    Block* last_ = nullptr;
    std::byte* free_ = nullptr;
    std::size_t left_ = 0;
    std::size_t total_ = 0;
};

inline void* EntryMemory::Allocate(std::size_t size)
{
    if (size > left_)
        ReserveMore(size);
    void* const allocated = free_;
    free_ += size;
    left_ -= size;
    return allocated;
}

}  // namespace tvx
