// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

// Reports a null key twice.
class Wrong final : public NullKeyMap
{
public:
    Result SetNullKey(IObject* value) override
    {
        WriteReport("TVX_RETURN_EPOINTER_IF_NULL", __FILE__, __LINE__);
        return ForwardingMap::SetValue(nullptr, value);
    }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
