// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Check.h"

#include <span>

namespace tvx::check
{

// What is checked, in the order in which it is run: from the file of a module to what needs most of it.
std::span<const Family* const> GetFamilies();

// The check that says that a module cannot be loaded at all.
inline constexpr char LoadCheckName[] = "load-succeeds";

}  // namespace tvx::check
