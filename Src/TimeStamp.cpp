// SPDX-License-Identifier: MIT
#include "Src/TimeStamp.h"

#include "Platform/LocalTime.h"

namespace tvx
{

std::string_view TimeStamp::Get(std::time_t moment) noexcept
{
    if (length_ == 0 || moment != moment_)
    {
        std::tm local = {};
        const bool known = Platform::GetLocalTime(moment, local);
        length_ = known ? std::strftime(text_, sizeof text_, "%Y-%m-%d %H:%M:%S", &local) : 0;
        moment_ = moment;
    }
    return {text_, length_};
}

}  // namespace tvx
