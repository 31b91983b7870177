// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/CountedImpl.h"
#include "Helpers/InterfaceList.h"
#include "Interfaces/ISimpleMapIterator.h"
#include "Src/EntryTable.h"

namespace tvx
{

// What the iterators of the settings map share: a place in its table. They hold no reference on the map.
template <class Class>
class SimpleMapIteratorImpl : public CountedImpl<Class, ISimpleMapIterator>
{
public:
    // No identifier of its own: clients use the pointer that the map gave.
    using Interfaces = InterfaceList<IObjectBase>;

    const char* GetKey() override { return IsAtEnd() ? nullptr : position_->first.c_str(); }

    const char* GetValue() override { return IsAtEnd() ? nullptr : position_->second.c_str(); }

protected:
    explicit SimpleMapIteratorImpl(const EntryTable& table) noexcept : table_(table), position_(table.begin()) {}
    ~SimpleMapIteratorImpl() = default;

    bool IsAtEnd() const noexcept { return position_ == table_.end(); }

    const EntryTable& GetTable() const noexcept { return table_; }

    const std::string& GetCurrentKey() const noexcept { return position_->first; }

    void MoveOn() noexcept { ++position_; }

    void MoveTo(EntryTable::const_iterator position) noexcept { position_ = position; }

private:
    const EntryTable& table_;
    EntryTable::const_iterator position_;
};

}  // namespace tvx
