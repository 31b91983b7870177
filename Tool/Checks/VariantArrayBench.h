// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Objects.h"

namespace tvx::check
{

// Expects this size.
void HasArraySize(Trial& trial, IVariantArray& array, std::uint32_t expected);

// The element, which is not null.
Ref<IVariant> GetArrayElement(Trial& trial, IVariantArray& array, std::uint32_t index);

// A variant of the module, which an array makes without another export.
Ref<IVariant> MakeArrayElement(Trial& trial);

}  // namespace tvx::check
