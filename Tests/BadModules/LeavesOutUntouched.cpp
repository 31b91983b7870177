// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainExport.h"

// Leaves the out of what it does not know as it is.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const bool isOwn = id != nullptr && std::string_view(id) == tvx::bad::PlainId;
    return isOwn ? tvx::bad::GivePlain(id, out) : tvx::TVX_E_FAIL;
}
