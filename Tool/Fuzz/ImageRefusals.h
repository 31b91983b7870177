// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IImage.h"
#include "Tool/Checks/Trial.h"

#include <cstdint>

namespace tvx::fuzz
{

// Tries one of the calls that are refused whatever was done with the image and the view before, by a number. A second
// reference on the image is no matter.
void TryImageRefused(check::Trial& trial, IImageFactory& factory, IImage& image, IConstImage& view,
                     std::uint32_t number);

}  // namespace tvx::fuzz
