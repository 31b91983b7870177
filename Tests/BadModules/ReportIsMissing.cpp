// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

// Refuses a null key without its report line.
class Wrong final : public NullKeyMap
{
public:
    Result SetNullKey(IObject*) override { return TVX_E_POINTER; }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
