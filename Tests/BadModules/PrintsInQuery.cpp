// SPDX-License-Identifier: MIT
#include "Helpers/Results.h"
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/OwnQuery.h"

namespace tvx::bad
{

namespace
{

// Reports what is refused.
class Wrong final : public OwnRefusal<Wrong>
{
public:
    Result Refuse(void**)
    {
        WriteReport("TVX_RETURN_FAIL_IF_NULL", __FILE__, __LINE__);
        return TVX_E_NOINTERFACE;
    }
};

}  // namespace

constexpr Export Exports[] = {{PlainId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
