// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Tool/Checks/SlotCaller.h"

// The C caller gets objects as the addresses of their interfaces, and gives such addresses back.
namespace tvx::check
{

// The address that a C caller calls the interface of an object by.
template <class Interface, class Held>
void* ToC(const Ref<Held>& object)
{
    return static_cast<Interface*>(object.Get());
}

// Calls with a place for an out pointer, and takes over the reference that came out.
template <class Interface, class Call>
Ref<Interface> FromC(Call&& call)
{
    void* out = nullptr;
    call(&out);
    return Ref<Interface>::Adopt(static_cast<Interface*>(out));
}

}  // namespace tvx::check
