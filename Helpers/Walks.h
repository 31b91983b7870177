// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Interfaces/ICollection.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IUserDataContainer.h"

#include <cstdint>

// How the ranges step through containers. A walk borrows what it walks; its range keeps that alive. Read and MoveOn are
// for a walk that is not at its end.
namespace tvx
{

// The items of a collection. Asks for the count at each step, so that the collection may shrink in between.
class ItemWalk
{
public:
    explicit ItemWalk(ICollection& collection) noexcept : collection_(&collection) {}

    bool IsAtEnd() const { return index_ >= collection_->GetCount(); }

    Ref<IObject> Read() const
    {
        Ref<IObject> item;
        static_cast<void>(collection_->GetItem(index_, item.Receive()));
        return item;
    }

    void MoveOn() noexcept { ++index_; }

private:
    ICollection* collection_;
    std::uint32_t index_ = 0;
};

// The items that answer Wanted.
template <class Wanted>
class ItemAsWalk
{
public:
    explicit ItemAsWalk(ICollection& collection) : following_(collection) { MoveOn(); }

    bool IsAtEnd() const noexcept { return !current_; }

    const Ref<Wanted>& Read() const noexcept { return current_; }

    void MoveOn()
    {
        current_ = nullptr;
        for (; !current_ && !following_.IsAtEnd(); following_.MoveOn())
            current_ = Query<Wanted>(following_.Read());
    }

private:
    ItemWalk following_;  // stands behind the current item
    Ref<Wanted> current_;
};

// An entry of a settings map, owned by the map.
struct MapEntry
{
    const char* key;    // valid as long as the map
    const char* value;  // valid until this entry is written again
};

// The entries of a settings map. No iterator is an empty walk.
class EntryWalk
{
public:
    explicit EntryWalk(ISimpleMapIterator* iterator) : iterator_(iterator)
    {
        if (iterator_ != nullptr)
            Fetch();
    }

    bool IsAtEnd() const noexcept { return current_.key == nullptr; }

    const MapEntry& Read() const noexcept { return current_; }

    void MoveOn()
    {
        static_cast<void>(iterator_->Next());
        Fetch();
    }

private:
    void Fetch()
    {
        current_.key = iterator_->GetKey();
        if (current_.key != nullptr)
            current_.value = iterator_->GetValue();
    }

    ISimpleMapIterator* iterator_;
    MapEntry current_{};
};

// One object that a client attached. The name is owned by the container.
struct NamedObject
{
    const char* name;         // valid until the entry is removed
    Ref<IObjectBase> object;  // what is attached
};

// The user data of a container. No iterator is an empty walk.
class UserDataWalk
{
public:
    explicit UserDataWalk(IUserDataIterator* iterator) noexcept : iterator_(iterator) {}

    bool IsAtEnd() const { return iterator_ == nullptr || iterator_->IsEnd(); }

    NamedObject Read() const
    {
        NamedObject current{iterator_->GetKey(), nullptr};
        static_cast<void>(iterator_->GetObject(current.object.Receive()));
        return current;
    }

    void MoveOn() { static_cast<void>(iterator_->Next()); }

private:
    IUserDataIterator* iterator_;
};

}  // namespace tvx
