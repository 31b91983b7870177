// SPDX-License-Identifier: MIT
#pragma once

#include <ctime>

namespace tvx::Platform
{

// The moment as the calendar and clock on the wall here show it. Gives false, and out as it was, for a moment outside the
// system's calendar.
bool GetLocalTime(std::time_t moment, std::tm& out) noexcept;

}  // namespace tvx::Platform
