// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

namespace tvx
{

// Where every range ends.
struct RangeEnd
{
};

// The place in a range, as range-for and the standard library want it: an input iterator over a walk, which says
// IsAtEnd, Read and MoveOn. Copies of it may share their place. It must not outlive its range.
template <class Walk>
class RangeIterator
{
public:
    using reference = decltype(std::declval<const Walk&>().Read());
    using value_type = std::decay_t<reference>;
    using pointer = void;
    using difference_type = std::ptrdiff_t;
    using iterator_category = std::input_iterator_tag;

    explicit RangeIterator(Walk walk) noexcept : walk_(std::move(walk)) {}

    // What the walk is at.
    reference operator*() const { return walk_.Read(); }

    // Moves the walk on.
    RangeIterator& operator++()
    {
        walk_.MoveOn();
        return *this;
    }
    void operator++(int) { walk_.MoveOn(); }

    friend bool operator==(const RangeIterator& place, RangeEnd) { return place.walk_.IsAtEnd(); }
    friend bool operator==(RangeEnd, const RangeIterator& place) { return place.walk_.IsAtEnd(); }
    friend bool operator!=(const RangeIterator& place, RangeEnd) { return !place.walk_.IsAtEnd(); }
    friend bool operator!=(RangeEnd, const RangeIterator& place) { return !place.walk_.IsAtEnd(); }

private:
    Walk walk_;
};

}  // namespace tvx
