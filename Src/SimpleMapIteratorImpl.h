// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/CountedImpl.h"
#include "Helpers/InterfaceList.h"
#include "Interfaces/ISimpleMapIterator.h"
#include "Src/EntryPlace.h"

namespace tvx
{

// What the iterators of the settings map share: a place in its table. They hold no reference on the map.
template <class Class>
class SimpleMapIteratorImpl : public CountedImpl<Class, ISimpleMapIterator>
{
public:
    // No identifier of its own: clients use the pointer that the map gave.
    using Interfaces = InterfaceList<IObjectBase>;

    const char* GetKey() override { return IsAtEnd() ? nullptr : place_.Get()->GetKeyText(); }

    const char* GetValue() override { return IsAtEnd() ? nullptr : place_.Get()->GetValueText(); }

protected:
    explicit SimpleMapIteratorImpl(const EntryTable& table) noexcept : place_(table) {}
    ~SimpleMapIteratorImpl() = default;

    bool IsAtEnd() const noexcept { return place_.Get() == nullptr; }

    EntryPlace place_;
};

}  // namespace tvx
