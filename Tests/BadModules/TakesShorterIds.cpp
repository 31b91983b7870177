// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainExport.h"

// Takes the beginning of an id, which may be nothing at all, for the id.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const bool isOwn = id != nullptr && std::string_view(tvx::bad::PlainId).starts_with(id);
    return tvx::bad::GivePlain(isOwn ? tvx::bad::PlainId : id, out);
}
