// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/OwnQuery.h"

namespace tvx::bad
{

namespace
{

// Counts also for a query that it refuses.
class Wrong final : public OwnRefusal<Wrong>
{
public:
    Result Refuse(void**)
    {
        AddRef();
        return TVX_E_NOINTERFACE;
    }
};

}  // namespace

constexpr Export Exports[] = {{PlainId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
