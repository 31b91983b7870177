// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/RangeIterator.h"
#include "Helpers/Walks.h"

#include <utility>

// Range-for over what containers hold, with the calls that a loop written by hand makes. A range keeps a reference on
// what it walks and is walked once. Threads: one at a time, as the container.
namespace tvx
{

// What a collection holds, walked by index.
template <class Walk>
class CollectionRange
{
public:
    // Keeps collection alive.
    explicit CollectionRange(ICollection& collection) : collection_(&collection) {}

    RangeIterator<Walk> begin() const { return RangeIterator<Walk>(Walk(*collection_)); }
    RangeEnd end() const noexcept { return {}; }

private:
    Ref<ICollection> collection_;
};

// What a container walks by an iterator of its own. Empty when there is none.
template <class Walk, class Container, class Iterator>
class IteratorRange
{
public:
    // The shape of the operations that make one.
    using MakeIterator = Result (Container::*)(Iterator** out);

    // Has the container make its iterator, by the operation make.
    IteratorRange(Ref<Container> container, MakeIterator make)
        : container_(std::move(container)),
          result_((*container_.*make)(iterator_.Receive()))
    {
        if (!TVX_FAILED(result_) && !iterator_)
            result_ = TVX_E_FAIL;
        if (TVX_FAILED(result_))
            iterator_ = nullptr;
    }

    IteratorRange(const IteratorRange&) = default;
    IteratorRange(IteratorRange&&) noexcept = default;
    ~IteratorRange() = default;

    // An assignment would let the old container go before its iterator.
    IteratorRange& operator=(const IteratorRange&) = delete;

    // A range over nothing, for the reason that code gives.
    explicit IteratorRange(Result code) : result_(code) {}

    RangeIterator<Walk> begin() const { return RangeIterator<Walk>(Walk(iterator_.Get())); }
    RangeEnd end() const noexcept { return {}; }

    // Failure tells that the range is empty because there was no iterator, usually for want of memory (-4).
    Result GetResult() const noexcept { return result_; }

private:
    Ref<Container> container_;
    Ref<Iterator> iterator_;  // must not outlive the container
    Result result_;
};

// The entries of a settings map.
using MapRange = IteratorRange<EntryWalk, ISimpleMap, ISimpleMapIterator>;
// What clients attached to a container.
using UserDataRange = IteratorRange<UserDataWalk, IUserDataContainer, IUserDataIterator>;

namespace detail
{

inline MapRange MakeChildren(ISimpleMap& map, const char* path, MapRange::MakeIterator make)
{
    Ref<ISimpleMap> below;
    const auto result = map.GetSubMap(path, below.Receive());
    if (TVX_FAILED(result) || !below)
        return MapRange(TVX_FAILED(result) ? result : TVX_E_FAIL);
    return MapRange(std::move(below), make);
}

}  // namespace detail

// The items as Ref<IObject>, the null ones, too. The collection may change meanwhile: what stands at the next index
// comes next, so after an item is taken out in front of it one is passed over, and what is appended is walked, too.
inline CollectionRange<ItemWalk> Items(ICollection& collection)
{
    return CollectionRange<ItemWalk>(collection);
}

// The items that answer Wanted, as Ref<Wanted>; else as Items.
template <class Wanted>
CollectionRange<ItemAsWalk<Wanted>> ItemsAs(ICollection& collection)
{
    return CollectionRange<ItemAsWalk<Wanted>>(collection);
}

// The entries in key order, as {key, value} of C texts. The map may be written to meanwhile: new keys behind the
// current one are walked, too. A key is valid as long as the map, a value until that entry is written.
inline MapRange Entries(ISimpleMap& map)
{
    return MapRange(Ref<ISimpleMap>(&map), &ISimpleMap::GetIterator);
}

// After each entry without those whose keys begin with that entry's key; else as Entries.
inline MapRange EntriesNoSubMaps(ISimpleMap& map)
{
    return MapRange(Ref<ISimpleMap>(&map), &ISimpleMap::GetIteratorNoSubMaps);
}

// The entries below path, their keys without it, as they are now: the range walks a map of its own, and key and value
// are valid as long as the range.
//   path  without a backslash at its end; null gives an empty range with the map's report and code
inline MapRange Children(ISimpleMap& map, const char* path)
{
    return detail::MakeChildren(map, path, &ISimpleMap::GetIterator);
}

// Children as EntriesNoSubMaps walks them.
inline MapRange ChildrenNoSubMaps(ISimpleMap& map, const char* path)
{
    return detail::MakeChildren(map, path, &ISimpleMap::GetIteratorNoSubMaps);
}

// What clients attached, in the order of the names, as {name, object} of a C text, owned by the container, and a
// Ref<IObjectBase>. The container must not change meanwhile.
inline UserDataRange UserData(IUserDataContainer& container)
{
    return UserDataRange(Ref<IUserDataContainer>(&container), &IUserDataContainer::CreateUserDataIterator);
}

}  // namespace tvx
