// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObjectBase.h"

#include <atomic>
#include <cstdint>
#include <type_traits>

namespace tvx
{

// A base of classes whose objects mostly have one holder from beginning to end. Who holds the only reference is alone with the
// object, so that letting it go needs no locked operation; looking first costs objects that are shared a little. Its
// constructors give no reference away.
class MostlyUnshared
{
protected:
    MostlyUnshared() = default;
    ~MostlyUnshared() = default;
};

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
        if constexpr (std::is_base_of_v<MostlyUnshared, Class>)
        {
            if (count_.load(std::memory_order_acquire) == 1)
                return Destroy();
        }
        const auto count = count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        return count == 0 ? Destroy() : count;
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

    // The first reference, for MakeRef only. Nobody else knows an object of a class that is mostly unshared yet, so that
    // nothing needs to be locked.
    void AddFirstRef() noexcept
    {
        if constexpr (std::is_base_of_v<MostlyUnshared, Class>)
            count_.store(1, std::memory_order_relaxed);
        else
            count_.fetch_add(1, std::memory_order_relaxed);
    }

protected:
    CountedImpl() = default;
    ~CountedImpl() = default;

private:
    // Gives the count. Not inlined: what a destructor needs to save would be saved by every release.
    [[gnu::noinline]] std::uint32_t Destroy()
    {
        count_.store(0, std::memory_order_relaxed);
        delete static_cast<Class*>(this);
        return 0;
    }

    std::atomic<std::uint32_t> count_{0};
};

}  // namespace tvx
