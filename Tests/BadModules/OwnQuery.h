// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ObjectImpl.h"
#include "Helpers/Singleton.h"
#include "Interfaces/IObject.h"
#include "Tests/BadModules/Plain.h"

#include <string_view>

namespace tvx::bad
{

// The export Plain of Class, which writes its query itself. The rest keeps every promise.
template <class Class>
class OwnQuery : public IObject, public Singleton<Class, IObject>, public ObjectImpl
{
public:
    std::uint32_t AddRef() final { return ++count_; }
    std::uint32_t Release() final
    {
        const std::uint32_t count = --count_;
        if (count == 0)
            delete static_cast<Class*>(this);
        return count;
    }
    bool IsUnique() final { return count_ == 1; }
    std::uint32_t GetRefCount() final { return count_; }

    void SubscribeDestroyed(IEventHandler* handler, std::uint64_t userData) final
    {
        ConnectDestroyed(handler, userData, true);
    }
    void UnsubscribeDestroyed(IEventHandler* handler) final { ConnectDestroyed(handler, 0, false); }
    std::uint32_t GetOwnerThreadId() final { return GetThread(); }
    Result SetOwnerThreadId(std::uint32_t id) final
    {
        SetThread(id);
        return TVX_OK;
    }

protected:
    ~OwnQuery() = default;

    static bool IsOwnId(const char* id)
    {
        return id != nullptr && (std::string_view(id) == IObject::Id || std::string_view(id) == IObjectBase::Id);
    }

    // What a right query does once the identifier is one of the object's.
    Result Give(IObject* face, void** out)
    {
        AddRef();
        *out = face;
        return TVX_OK;
    }

private:
    std::atomic<std::uint32_t> count_{0};
};

// An OwnQuery that is right about what it answers. How it refuses is what Class writes, as Refuse(out).
template <class Class>
class OwnRefusal : public OwnQuery<Class>
{
public:
    Result DoQueryInterface(const char* id, void** out) final
    {
        if (this->IsOwnId(id) && out != nullptr)
            return this->Give(this, out);
        return static_cast<Class*>(this)->Refuse(out);
    }

protected:
    ~OwnRefusal() = default;
};

}  // namespace tvx::bad
