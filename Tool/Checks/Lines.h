// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace tvx::check
{

// What was recorded, a line for each event or call.
using Lines = std::vector<std::string>;

}  // namespace tvx::check
