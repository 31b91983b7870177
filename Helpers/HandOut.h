// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"

namespace tvx
{

// The one way in which a factory makes an object and gives it away: the caller of the operation owns the one reference.
// Gives -4 without a report when memory is exhausted or out is null; an object made for a null out is destroyed again.
template <class Class, class Interface, class... Arguments>
Result HandOutNew(Interface** out, Arguments&&... arguments)
try
{
    auto made = MakeRef<Class>(std::forward<Arguments>(arguments)...);
    if (out == nullptr)
        return TVX_E_POINTER;
    *out = Class::Interfaces::template GetFace<Interface>(*made.Detach());
    return TVX_OK;
}
catch (...)  // the constructors here throw only for want of memory, and nothing is thrown across an interface
{
    return TVX_E_POINTER;
}

}  // namespace tvx
