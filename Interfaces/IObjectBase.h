// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/Result.h"

#include <cstdint>

namespace tvx
{

// The root of every interface: a reference count and the way from one interface of an object to another.
//
// A new object has the count 0, and whoever makes it for a caller adds the first reference. An interface holds operations
// only; their order is the order of the slots that every module and host, whenever it was compiled, calls by.
class IObjectBase
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IObjectBase/1.0";

    // Slot 1. Adds one reference and gives the new count.
    // Threads: any. Fails: never.
    virtual std::uint32_t AddRef() = 0;

    // Slot 2. Removes one reference and gives the new count; at 0 the object destroys itself.
    // Threads: any. Fails: never.
    virtual std::uint32_t Release() = 0;

    // Slot 3. Gives the object's face for the interface id. It only forwards to DoQueryInterface and is never overridden.
    //   id   borrowed; compared byte for byte, including its NUL
    //   out  receives one reference, owned by the caller: a pointer to exactly the interface that id names
    // Threads: any. Fails: -3 without a report when the object does not answer id or out is null; out is left untouched.
    virtual Result QueryInterface(const char* id, void** out) { return DoQueryInterface(id, out); }

    // Slot 4. Answers QueryInterface for the class.
    //   id   borrowed
    //   out  receives one reference, owned by the caller
    // Threads: any. Fails: as QueryInterface.
    virtual Result DoQueryInterface(const char* id, void** out) = 0;

    // Slot 5. Tells whether the reference count is exactly 1.
    // Threads: any; the answer is only lasting for the holder of that one reference. Fails: never.
    virtual bool IsUnique() = 0;

    // Slot 6. Gives the reference count.
    // Threads: any; another thread may change it at once. Fails: never.
    virtual std::uint32_t GetRefCount() = 0;

protected:
    ~IObjectBase() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
// Before C++17 a static member needs a definition of its own; it is weak, so that every source file may bring it.
[[gnu::weak]] constexpr const char tvx::IObjectBase::Id[];
#endif
