// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/CountedImpl.h"
#include "Helpers/InterfaceList.h"
#include "Helpers/ObjectImpl.h"

namespace tvx
{

// The ten operations of IObject for Class: what CountedImpl gives, and the events and owner thread of ObjectImpl.
//
// ObjectImpl is the last base: it fires "Destroyed" when the members of Class are gone and the faces that carry state of
// their own still stand.
template <class Class, class... Faces>
class ClassImpl : public CountedImpl<Class, Faces...>, public ObjectImpl
{
public:
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
    ClassImpl() = default;
    ~ClassImpl() = default;
};

}  // namespace tvx
