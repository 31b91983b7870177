// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <typeinfo>

namespace tvx::host
{

// An interface as the life tracer stands in for it. These live as long as the process.
struct TracedInterface
{
    const std::type_info* type;
    const char* id;               // null for one that nobody asks for
    const TracedInterface* base;  // null for IObjectBase
    const void* const* slots;     // the code of each, the first being slot 1

    bool IsA(const TracedInterface& other) const { return this == &other || (base != nullptr && base->IsA(other)); }
};

// All that the tracer knows, each behind its base.
std::span<const TracedInterface* const> GetTracedInterfaces();

// Null for one that the tracer does not know.
const TracedInterface* FindTracedInterface(std::string_view id);

}  // namespace tvx::host
