// SPDX-License-Identifier: MIT
#include "Platform/StandardStreams.h"
#include "Tests/BadModules/PlainExport.h"

// Tells the world whom it gives.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const tvx::Result result = tvx::bad::GivePlain(id, out);
    if (result == tvx::TVX_OK)
        tvx::Platform::WriteLine({"giving ", id});
    return result;
}
