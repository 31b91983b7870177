// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainExport.h"

// Relies on the out.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    tvx::IObjectBase* volatile* const place = out;
    *place = nullptr;
    return tvx::bad::GivePlain(id, out);
}
