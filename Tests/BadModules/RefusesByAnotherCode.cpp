// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/OwnQuery.h"

namespace tvx::bad
{

namespace
{

// Refuses as if something had gone wrong.
class Wrong final : public OwnRefusal<Wrong>
{
public:
    Result Refuse(void**) { return TVX_E_FAIL; }
};

}  // namespace

constexpr Export Exports[] = {{PlainId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
