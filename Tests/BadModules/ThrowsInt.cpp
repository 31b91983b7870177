// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainExport.h"

// Throws something that is no exception.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    if (id == nullptr)
        throw 1;
    return tvx::bad::GivePlain(id, out);
}
