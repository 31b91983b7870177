// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IString.h"

namespace greeting
{

// Greets. What is here never changes once it is out: the order of the operations is how callers find them.
class IGreeter : public tvx::IObject
{
public:
    static constexpr const char Id[] = "com.example.greeting.IGreeter/1.0";

    // Slot 11. Makes a greeting.
    //   name  borrowed; who is greeted
    //   out   receives one reference, owned by the caller
    // Threads: one at a time. Fails: -4 when name or out is null or memory is exhausted; -1 when strings cannot be made.
    virtual tvx::Result Greet(const char* name, tvx::IString** out) = 0;

protected:
    ~IGreeter() = default;
};

}  // namespace greeting
