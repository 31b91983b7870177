// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/CountedImpl.h"
#include "Helpers/HandOut.h"
#include "Helpers/InterfaceList.h"
#include "Helpers/Results.h"
#include "Interfaces/IUserDataContainer.h"

#include <map>
#include <string>
#include <string_view>

namespace tvx
{

// Names with their objects, in the byte order of the names.
using UserDataTable = std::map<std::string, Ref<IObjectBase>, std::less<>>;

// Walks a user-data table. Holds no reference on its owner; removing the entry it stands on ends its use.
class CUserDataIterator final : public CountedImpl<CUserDataIterator, IUserDataIterator>
{
public:
    // No identifier of its own: clients use the pointer that the container gave.
    using Interfaces = InterfaceList<IObjectBase>;

    // Stands on the first entry. The table has to live longer.
    explicit CUserDataIterator(const UserDataTable& table) : table_(table), position_(table.begin()) {}

    Result Next() override
    {
        TVX_CHECK_PRECOND(!IsEnd());
        ++position_;
        return TVX_OK;
    }

    bool IsEnd() override { return position_ == table_.end(); }

    const char* GetKey() override { return IsEnd() ? nullptr : position_->first.c_str(); }

    Result GetObject(IObjectBase** out) override
    {
        TVX_CHECK_PRECOND(!IsEnd());
        if (out == nullptr)
            return TVX_E_POINTER;
        HandOut(position_->second.Get(), out);
        return TVX_OK;
    }

private:
    const UserDataTable& table_;
    UserDataTable::const_iterator position_;
};

// A face for any class: named objects that clients attach. One thread at a time.
class UserDataContainerImpl : public IUserDataContainer
{
public:
    Result SetUserData(const char* name, IObjectBase* object) override
    try
    {
        TVX_RETURN_EPOINTER_IF_NULL(name);
        if (object == nullptr)
            return Remove(name);
        table_[name] = Ref<IObjectBase>(object);
        return TVX_OK;
    }
    catch (...)  // want of memory
    {
        return TVX_E_POINTER;
    }

    Result GetUserData(const char* name, IObjectBase** out) override { return Find(name, out); }

    Result GetUserData(const char* name, const IObjectBase** out) override { return Find(name, out); }

    Result CreateUserDataIterator(IUserDataIterator** out) override
    {
        return HandOutNew<CUserDataIterator>(out, table_);
    }

    // The table is empty before the first object is released: a release may run code that looks here.
    Result ClearUserData() override
    {
        UserDataTable released;
        released.swap(table_);
        return TVX_OK;
    }

protected:
    UserDataContainerImpl() = default;
    ~UserDataContainerImpl() = default;

private:
    Result Remove(std::string_view name)
    {
        const auto found = table_.find(name);
        if (found == table_.end())
            return TVX_OK;
        const auto removed = table_.extract(found);  // releases its object last, when the entry is gone
        return TVX_OK;
    }

    template <class Object>
    Result Find(const char* name, Object** out)
    {
        TVX_RETURN_EPOINTER_IF_NULL(out);
        *out = nullptr;
        const auto found = name == nullptr ? table_.end() : table_.find(std::string_view(name));
        if (found == table_.end())
            return TVX_S_NOKEY;
        IObjectBase* object = nullptr;
        HandOut(found->second.Get(), &object);
        *out = object;
        return TVX_S_VALUE;
    }

    UserDataTable table_;
};

}  // namespace tvx
