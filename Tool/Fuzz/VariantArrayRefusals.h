// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Interfaces/IVariantArray.h"
#include "Tool/Checks/Trial.h"

#include <cstdint>

namespace tvx::fuzz
{

// Tries one of the calls that are refused whatever was done with the array before, by a number.
void TryVariantArrayRefused(check::Trial& trial, const Ref<IVariantArray>& array, std::uint32_t size,
                            std::uint32_t number);

}  // namespace tvx::fuzz
