// SPDX-License-Identifier: MIT
#include "Platform/ClassName.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include <cxxabi.h>
#include <dlfcn.h>

namespace tvx::Platform
{

namespace
{

// In front of a table of slots that no C++ compiler made, such as one in C, stands anything. A type is an object whose own
// class is one of those that the C++ runtime has for types.
bool IsType(const void* address)
{
    constexpr std::string_view runtimeClasses = "_ZTVN10__cxxabiv1";
    Dl_info found = {};
    if (reinterpret_cast<std::uintptr_t>(address) % alignof(std::type_info) != 0 || dladdr(address, &found) == 0)
        return false;
    const void* table = nullptr;
    std::memcpy(&table, address, sizeof table);
    return dladdr(table, &found) != 0 && found.dli_sname != nullptr &&
           std::string_view(found.dli_sname).substr(0, runtimeClasses.size()) == runtimeClasses;
}

// Stands in front of the object's slots; typeid would trust that it is there.
const std::type_info* FindType(const IObjectBase& object)
{
    const void* const* slots = nullptr;
    std::memcpy(&slots, static_cast<const void*>(&object), sizeof slots);
    return IsType(slots[-1]) ? static_cast<const std::type_info*>(slots[-1]) : nullptr;
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
