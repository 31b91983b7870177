// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"

namespace tvx
{

// A base of classes that keep bytes behind their objects: how MakeRef gets and gives back the one allocation of both.
class TailAllocated
{
public:
    // Memory for the object and the bytes behind it, and back; for MakeRef only.
    static void* operator new(std::size_t size, TailSize tail) { return ::operator new(size + tail.bytes); }
    static void operator delete(void* memory) noexcept { ::operator delete(memory); }
    static void operator delete(void* memory, TailSize) noexcept { ::operator delete(memory); }

protected:
    TailAllocated() = default;
    ~TailAllocated() = default;
};

}  // namespace tvx
