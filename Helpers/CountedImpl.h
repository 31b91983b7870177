// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObjectBase.h"

#include <atomic>
#include <cstdint>

namespace tvx
{

// The six operations of IObjectBase for Class, which derives from this and says in Class::Interfaces what it answers.
// Faces are the interfaces of the class, the primary one first; their slots stand as declared, none is added.
template <class Class, class... Faces>
class CountedImpl : public Faces...
{
public:
    CountedImpl(const CountedImpl&) = delete;
    CountedImpl& operator=(const CountedImpl&) = delete;

    std::uint32_t AddRef() final { return count_.fetch_add(1, std::memory_order_relaxed) + 1; }

    std::uint32_t Release() final
    {
        const auto count = count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (count == 0)
            delete static_cast<Class*>(this);
        return count;
    }

    Result DoQueryInterface(const char* id, void** out) final
    {
        if (id == nullptr || out == nullptr)
            return TVX_E_NOINTERFACE;
        void* const face = Class::Interfaces::FindFace(static_cast<Class&>(*this), id);
        if (face == nullptr)
            return TVX_E_NOINTERFACE;
        AddRef();
        *out = face;
        return TVX_OK;
    }

    bool IsUnique() final { return GetRefCount() == 1; }

    std::uint32_t GetRefCount() final { return count_.load(std::memory_order_acquire); }

protected:
    CountedImpl() = default;
    ~CountedImpl() = default;

private:
    std::atomic<std::uint32_t> count_{0};
};

}  // namespace tvx
