// SPDX-License-Identifier: MIT
#include "Src/EntryMemory.h"

#include <algorithm>
#include <new>

namespace tvx
{

namespace
{

constexpr std::size_t SmallestBlock = 560;  // ten entries such as most settings are
constexpr std::size_t LargestBlock = 64 * 1024;

}  // namespace

EntryMemory::~EntryMemory()
{
    while (last_ != nullptr)
    {
        Block* const block = last_;
        last_ = block->before;
        ::operator delete(block);
    }
}

void EntryMemory::Reserve(std::size_t size)
{
    last_ = new (::operator new(sizeof(Block) + size)) Block{last_};
    free_ = reinterpret_cast<std::byte*>(last_ + 1);
    total_ += size - left_;  // what is left of the block before is lost
    left_ = size;
}

void EntryMemory::ReserveMore(std::size_t size)
{
    Reserve(std::max(size, std::clamp(RoundUp(total_ / 8), SmallestBlock, LargestBlock)));
}

}  // namespace tvx
