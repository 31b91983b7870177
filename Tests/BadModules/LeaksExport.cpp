// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainExport.h"

// Gives one reference too many.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const tvx::Result result = tvx::bad::GivePlain(id, out);
    if (result == tvx::TVX_OK)
        (*out)->AddRef();
    return result;
}
