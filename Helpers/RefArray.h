// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/Ref.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace tvx
{

// A growable array that holds one reference on each element, which may be null. The elements are plain pointers side by
// side: those that only shift are moved as memory, without touching their counts.
template <class T>
class RefArray
{
public:
    RefArray() = default;
    RefArray(const RefArray&) = delete;
    RefArray& operator=(const RefArray&) = delete;

    // Empty first: an element that dies now may look in here.
    ~RefArray()
    {
        const auto elements = std::exchange(elements_, {});
        for (T* const element : elements)
            Ref<T>::Adopt(element);
    }

    // The number of elements.
    std::size_t GetSize() const noexcept { return elements_.size(); }

    // Borrowed.
    T* Get(std::size_t index) const noexcept { return elements_[index]; }

    // index is at most the size. Throws std::bad_alloc, unchanged, when memory is exhausted.
    void Insert(std::size_t index, Ref<T> element)
    {
        elements_.insert(elements_.begin() + static_cast<std::ptrdiff_t>(index), element.Get());
        element.Detach();
    }

    // Closes the gap and gives the element's reference to the caller.
    Ref<T> Take(std::size_t index) noexcept
    {
        auto taken = Ref<T>::Adopt(elements_[index]);
        elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(index));
        return taken;
    }

    // Moves the element at from to where it then stands at to; those between shift by one.
    void Move(std::size_t from, std::size_t to) noexcept
    {
        const auto begin = elements_.begin();
        const auto at = [begin](std::size_t index) { return begin + static_cast<std::ptrdiff_t>(index); };
        if (from < to)
            std::rotate(at(from), at(from + 1), at(to + 1));
        else
            std::rotate(at(to), at(from), at(from + 1));
    }

    // The first index of element, or the size when it is not there.
    std::size_t Find(const T* element) const noexcept
    {
        return static_cast<std::size_t>(std::find(elements_.begin(), elements_.end(), element) - elements_.begin());
    }

private:
    std::vector<T*> elements_;
};

}  // namespace tvx
