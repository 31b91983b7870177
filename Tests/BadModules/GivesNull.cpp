// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainExport.h"

// Says that it gives something, and gives null.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const tvx::Result result = tvx::bad::GivePlain(id, out);
    if (result != tvx::TVX_OK)
        return result;
    (*out)->Release();
    *out = nullptr;
    return tvx::TVX_OK;
}
