// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/ClassName.h"

#include <string>
#include <type_traits>

namespace tvx::host
{

// An operation as a type: so it can be told from another one, and has a name.
template <auto Operation>
struct OperationType
{
};

template <auto One, auto Other>
inline constexpr bool IsSameOperation = std::is_same_v<OperationType<One>, OperationType<Other>>;

// Such as IFactory::Create.
template <auto Operation>
std::string GetOperationName()
{
    const auto name = Platform::GetClassName(typeid(OperationType<Operation>));  // tvx::host::OperationType<&tvx::…>
    const auto begin = name.rfind("::", name.rfind("::") - 1) + 2;
    return name.substr(begin, name.rfind('>') - begin);
}

}  // namespace tvx::host
