// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <typeinfo>

namespace tvx::Platform
{

// A table of operations as the compiler makes one for a class with virtual functions, for objects that are put together
// by hand: their first word is the address of slots.
//
// Calls by the slots are the contract between modules, whoever compiled them: C makes them, too. What stands in front
// of them is the C++ ABI that g++ and clang++ share on this system: how far in front of the face its object begins, and
// the object's type. dynamic_cast, typeid and the sanitizers look there, so it has to be right, but no call of an
// operation does.
template <std::size_t SlotCount>
struct OperationTable
{
    std::ptrdiff_t offsetToTop;                // 0 where the object is nothing but the face
    const std::type_info* type;                // of the interface that the face is
    std::array<const void*, SlotCount> slots;  // the code of each operation, in the order of the slots
};

// Where the code of a member function begins that is not virtual. In the same ABI a pointer to one is two words, that
// address and an offset that is added to "this"; and it is called the way a virtual one is, also where the result is an
// object that the caller makes room for.
template <class Class, class Answer, class... Arguments>
const void* GetCodeAddress(Answer (Class::*operation)(Arguments...))
{
    static_assert(sizeof operation == 2 * sizeof(void*), "a member pointer is laid out in another way here");
    const void* words[2] = {};
    std::memcpy(words, &operation, sizeof words);
    return words[0];
}

// Calls an operation of the object behind an interface pointer by its slot, as C does. The class of the object need not
// derive from Interface as far as the language knows, so the sanitizers are not asked.
template <auto Operation, class Interface, class... Arguments>
__attribute__((no_sanitize("vptr"))) decltype(auto) CallBySlot(void* face, Arguments... arguments)
{
    return (static_cast<Interface*>(face)->*Operation)(arguments...);
}

// The table of an object with virtual functions, which tells classes apart: objects of one class have one table.
template <class Interface>
const void* GetTable(const Interface& object)
{
    const void* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(&object), sizeof table);
    return table;
}

}  // namespace tvx::Platform
