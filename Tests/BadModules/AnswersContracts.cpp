// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainExport.h"

// Gives its export also for what it fulfils.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const bool isContract = id != nullptr && std::string_view(id) == "com.talvere.test.PlainContract/1.0";
    return tvx::bad::GivePlain(isContract ? tvx::bad::PlainId : id, out);
}
