// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObjectBase.h"
#include "Interfaces/Ref.h"

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

namespace tvx
{

namespace detail
{

template <class Class, class Arguments, class = void>
struct HasTail : std::false_type
{
};

template <class Class, class... Arguments>
struct HasTail<Class, void(Arguments...),
               std::void_t<decltype(Class::GetTailSize(std::declval<const Arguments&>()...))>> : std::true_type
{
};

template <class Class, class = void>
struct CountsFirstRef : std::false_type
{
};

template <class Class>
struct CountsFirstRef<Class, std::void_t<decltype(std::declval<Class&>().AddFirstRef())>> : std::true_type
{
};

// The holder of the first reference on an object that was just made.
template <class Class>
Ref<Class> HoldFirst(Class* made)
{
    if constexpr (CountsFirstRef<Class>::value)
    {
        made->AddFirstRef();
        return Ref<Class>::Adopt(made);
    }
    else
        return Ref<Class>(made);
}

}  // namespace detail

// Bytes that an object keeps behind itself, in the same allocation.
struct TailSize
{
    std::size_t bytes;  // behind the object; may be 0
};

// Makes a framework object; the holder has its one reference. This is the only place where such objects are made.
//
// A class whose static GetTailSize takes the constructor's arguments is given that many bytes behind the object; it derives
// from TailAllocated. Throws std::bad_alloc when memory is exhausted.
template <class Class, class... Arguments>
Ref<Class> MakeRef(Arguments&&... arguments)
{
    if constexpr (detail::HasTail<Class, void(Arguments...)>::value)
        return detail::HoldFirst(new (Class::GetTailSize(arguments...)) Class(std::forward<Arguments>(arguments)...));
    else
        return detail::HoldFirst(new Class(std::forward<Arguments>(arguments)...));
}

// Asks object for the interface Wanted; empty when object is null or refuses.
template <class Wanted>
Ref<Wanted> Query(IObjectBase* object)
{
    void* face = nullptr;
    if (object == nullptr || TVX_FAILED(object->QueryInterface(Wanted::Id, &face)))
        return nullptr;
    return Ref<Wanted>::Adopt(static_cast<Wanted*>(face));
}

template <class Wanted, class Held>
Ref<Wanted> Query(const Ref<Held>& object)
{
    return Query<Wanted>(object.Get());
}

// Gives one reference on object to the place out, for the caller that out belongs to. Null is given as null.
template <class Interface, class Object>
void HandOut(Object* object, Interface** out)
{
    *out = Ref<Interface>(object).Detach();
}

}  // namespace tvx
