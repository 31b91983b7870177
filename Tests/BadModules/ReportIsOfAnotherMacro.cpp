// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

// Reports a null key by the right code and the wrong name.
class Wrong final : public NullKeyMap
{
public:
    Result SetNullKey(IObject*) override
    {
        WriteReport("TVX_RETURN_FAIL_IF_NULL", __FILE__, __LINE__);
        return TVX_E_POINTER;
    }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
