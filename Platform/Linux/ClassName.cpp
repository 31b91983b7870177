// SPDX-License-Identifier: MIT
#include "Platform/ClassName.h"

#include <cstdlib>
#include <cstring>
#include <memory>

#include <cxxabi.h>

namespace tvx::Platform
{

namespace
{

// Stands in front of the object's slots; typeid would trust that it is there.
const std::type_info* FindType(const IObjectBase& object)
{
    const std::type_info* const* slots = nullptr;
    std::memcpy(&slots, static_cast<const void*>(&object), sizeof slots);
    return slots[-1];
}

}  // namespace

std::string GetClassName(const std::type_info& type)
{
    const std::unique_ptr<char, decltype(&std::free)> name(abi::__cxa_demangle(type.name(), nullptr, nullptr, nullptr),
                                                           &std::free);
    return name != nullptr ? name.get() : type.name();
}

std::string GetClassNameOf(const IObjectBase& object)
{
    const auto* const type = FindType(object);
    return type != nullptr ? GetClassName(*type) : "";
}

}  // namespace tvx::Platform
