// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace tvx
{

// A short row of items, which it only points at. What is put in needs no memory: room for it is made before.
class ItemChunk
{
public:
    // The most items.
    static constexpr std::size_t MaxSize = 1024;

    // The number of items.
    std::size_t GetSize() const noexcept { return size_; }
    bool IsEmpty() const noexcept { return size_ == 0; }
    bool IsFull() const noexcept { return size_ == MaxSize; }

    // Whether there is memory for one more.
    bool HasRoom() const noexcept { return size_ < room_; }

    // The items, borrowed.
    IObject** begin() const noexcept { return items_.get(); }
    IObject** end() const noexcept { return items_.get() + size_; }
    IObject* operator[](std::size_t offset) const noexcept { return items_[offset]; }

    // Memory for count items, at least as many as there are. Throws std::bad_alloc when memory is exhausted.
    void Reserve(std::size_t count)
    {
        auto items = std::make_unique_for_overwrite<IObject*[]>(count);
        std::copy(begin(), end(), items.get());
        items_ = std::move(items);
        room_ = static_cast<std::uint32_t>(count);
    }

    // Memory for more items, twice as many as before. It is not full. Throws as Reserve.
    void Grow() { Reserve(std::clamp(std::size_t{room_} * 2, FirstRoom, MaxSize)); }

    // Behind the last item. There is room.
    void Append(IObject* item) noexcept { items_[size_++] = item; }

    // The items of other from offset on. There is room for them.
    void AppendFrom(const ItemChunk& other, std::size_t offset) noexcept
    {
        size_ = static_cast<std::uint32_t>(std::copy(other.begin() + offset, other.end(), end()) - begin());
    }

    // There is room.
    void Insert(std::size_t offset, IObject* item) noexcept
    {
        std::copy_backward(begin() + offset, end(), end() + 1);
        items_[offset] = item;
        ++size_;
    }

    // Closes the gap.
    IObject* Take(std::size_t offset) noexcept
    {
        IObject* const taken = items_[offset];
        std::copy(begin() + offset + 1, end(), begin() + offset);
        --size_;
        return taken;
    }

    // Moves the item at from to where it then stands at to; those between shift by one.
    void Move(std::size_t from, std::size_t to) noexcept
    {
        auto* const items = begin();
        if (from < to)
            std::rotate(items + from, items + from + 1, items + to + 1);
        else
            std::rotate(items + to, items + from, items + from + 1);
    }

    // Leaves the first count items only.
    void Shorten(std::size_t count) noexcept { size_ = static_cast<std::uint32_t>(count); }

private:
    static constexpr std::size_t FirstRoom = 8;

    std::unique_ptr<IObject*[]> items_;
    std::uint32_t size_ = 0;
    std::uint32_t room_ = 0;
};

}  // namespace tvx
