// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainExport.h"

// Does not look at what follows an id.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const bool isOwn = id != nullptr && std::string_view(id).starts_with(tvx::bad::PlainId);
    return tvx::bad::GivePlain(isOwn ? tvx::bad::PlainId : id, out);
}
