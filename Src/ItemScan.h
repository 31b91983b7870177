// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"

#include <cstddef>

namespace tvx
{

// The first index at which item stands among count items, or count when it does not; with what this processor does fastest.
std::size_t FindItem(const IObject* const* items, std::size_t count, const IObject* item) noexcept;

// The same in plain C++, which is what the fast one has to give.
namespace plain
{

std::size_t FindItem(const IObject* const* items, std::size_t count, const IObject* item) noexcept;

}  // namespace plain

}  // namespace tvx
