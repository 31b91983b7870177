// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Helpers/Results.h"

#include <utility>

namespace tvx
{

// The one shared instance of an exported class T, handed out as I. It is made by the first request, which must come before
// the class is shared between threads (registering the exports at load is that request), and let go at module unload.
template <class T, class I>
class Singleton
{
public:
    // Gives the instance.
    //   out  receives one reference, owned by the caller
    // Fails: -4, with a report when out is null, without one when memory is exhausted or the module is unloading.
    static Result GetInstance(I** out)
    {
        TVX_RETURN_EPOINTER_IF_NULL(out);
        const auto instance = GetOrMake();
        if (!instance)
            return TVX_E_POINTER;
        HandOut<I>(instance.Get(), out);
        return TVX_OK;
    }

    // The same instance for the export table.
    static Result GetExportInstance(IObjectBase** out)
    {
        TVX_RETURN_EPOINTER_IF_NULL(out);
        Ref<I> instance;
        TVX_RETURN_FAIL_IF_FAILED(GetInstance(instance.Receive()));
        *out = instance.Detach();
        return TVX_OK;
    }

    // The instance itself, for T's own class-wide operations; empty when memory is exhausted or the module is unloading.
    static Ref<T> GetOrMake() noexcept
    try
    {
        static const Unloading releaseAtUnload;
        if (held_ == nullptr && !unloading_)
            held_ = MakeRef<T>().Detach();
        return Ref<T>(held_);
    }
    catch (...)
    {
        return nullptr;
    }

protected:
    Singleton() = default;
    ~Singleton() = default;

private:
    // Its destruction is the module's unloading. The holder itself is a plain pointer, so that a host that still calls into
    // the module while the process ends finds it empty, not destroyed.
    struct Unloading
    {
        ~Unloading()
        {
            unloading_ = true;
            Ref<T>::Adopt(std::exchange(held_, nullptr));
        }
    };

    static inline T* held_ = nullptr;
    static inline bool unloading_ = false;
};

}  // namespace tvx
