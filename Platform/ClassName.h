// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObjectBase.h"

#include <string>
#include <typeinfo>

namespace tvx::Platform
{

// The name of a class as sources have it, with its namespaces; the compiler's own name for it where that cannot be told.
std::string GetClassName(const std::type_info& type);

// The class of an object of any module; empty when it was compiled without run-time type information, or not by C++.
std::string GetClassNameOf(const IObjectBase& object);

}  // namespace tvx::Platform
