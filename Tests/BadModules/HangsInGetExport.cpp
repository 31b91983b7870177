// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainExport.h"

#include <chrono>
#include <thread>

// Does not come back when it is asked for its export.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const tvx::Result result = tvx::bad::GivePlain(id, out);
    if (result == tvx::TVX_OK)
        std::this_thread::sleep_for(std::chrono::hours(1));
    return result;
}
