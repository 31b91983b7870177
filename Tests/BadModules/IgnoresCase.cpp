// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainExport.h"

#include <algorithm>
#include <cctype>
#include <string>

// Takes small letters for capital ones.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const std::string_view own = tvx::bad::PlainId;
    const std::string_view asked = id == nullptr ? "" : id;
    const bool isOwn =
        std::equal(own.begin(), own.end(), asked.begin(), asked.end(),
                   [](unsigned char left, unsigned char right) { return std::tolower(left) == std::tolower(right); });
    return tvx::bad::GivePlain(isOwn ? tvx::bad::PlainId : id, out);
}
