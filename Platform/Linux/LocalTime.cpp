// SPDX-License-Identifier: MIT
#include "Platform/LocalTime.h"

namespace tvx::Platform
{

bool GetLocalTime(std::time_t moment, std::tm& out) noexcept
{
    std::tm local = {};
    if (localtime_r(&moment, &local) == nullptr)
        return false;
    out = local;
    return true;
}

}  // namespace tvx::Platform
