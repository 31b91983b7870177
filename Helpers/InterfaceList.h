// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/EqualBytes.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace tvx
{

namespace detail
{

// Whether text is the identifier of Wanted. Identifiers begin alike and end differently: the last bytes are looked at first.
template <class Wanted>
bool IsIdOf(std::string_view text) noexcept
{
    using Ending = std::uint64_t;
    constexpr std::string_view id = Wanted::Id;
    if (text.size() != id.size())
        return false;
    if constexpr (id.size() > sizeof(Ending))
    {
        constexpr auto ending = id.size() - sizeof(Ending);
        if (!IsSameWord<Ending>(text.data() + ending, id.data() + ending))
            return false;
    }
    return EqualBytes(text.data(), id.data(), id.size());
}

}  // namespace detail

// An entry of an interface list that answers the identifier of Answered with the face Face, where the plain rule would
// choose another.
template <class Answered, class Face>
struct AnsweredBy
{
    static_assert(std::is_base_of_v<Answered, Face>, "a face can only stand in for an interface that it derives from");
};

// The identifiers a class answers to, in the order in which they are tested.
//
// A match gives the face of the first listed interface that is the one asked for or derives from it. So a class with
// several faces answers to IObject with its primary one, and names no casts.
template <class... Listed>
class InterfaceList
{
public:
    // Adds no reference; null when nothing matches.
    template <class Class>
    static void* FindFace(Class& object, std::string_view id)
    {
        void* face = nullptr;
        static_cast<void>((TestEntry<Class>(object, id, face, static_cast<Listed*>(nullptr)) || ...));
        return face;
    }

    // The face of an object of Class for an interface known at compile time; adds no reference.
    template <class Wanted, class Class>
    static Wanted* GetFace(Class& object)
    {
        if constexpr (std::is_convertible_v<Class*, Wanted*>)
            return &object;
        else
            return FindFirst<Class, Wanted, Listed...>(object);
    }

private:
    template <class Class, class Wanted>
    static bool TestEntry(Class& object, std::string_view id, void*& face, Wanted*)
    {
        if (!detail::IsIdOf<Wanted>(id))
            return false;
        face = GetFace<Wanted>(object);
        return true;
    }

    template <class Class, class Answered, class Face>
    static bool TestEntry(Class& object, std::string_view id, void*& face, AnsweredBy<Answered, Face>*)
    {
        if (!detail::IsIdOf<Answered>(id))
            return false;
        face = static_cast<Answered*>(static_cast<Face*>(&object));
        return true;
    }

    template <class Class, class Wanted, class First, class... Rest>
    static Wanted* FindFirst(Class& object)
    {
        if constexpr (std::is_base_of_v<Wanted, First>)
            return static_cast<First*>(&object);
        else
            return FindFirst<Class, Wanted, Rest...>(object);
    }
};

}  // namespace tvx
