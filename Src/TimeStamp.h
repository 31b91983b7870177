// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <ctime>
#include <string_view>

namespace tvx
{

// The local time as log lines show it, such as 2013-05-02 14:07:09. Works anew only when asked for another second than
// before, whichever way the clock has moved. One thread at a time.
class TimeStamp
{
public:
    // Borrowed until the next call. Empty for a moment outside the system's calendar.
    std::string_view Get(std::time_t moment) noexcept;

private:
    std::time_t moment_ = 0;
    char text_[80] = {};
    std::size_t length_ = 0;
};

}  // namespace tvx
