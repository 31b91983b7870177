// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

#include <cstdio>

namespace tvx::bad
{

namespace
{

// Reports a null key on standard error.
class Wrong final : public NullKeyMap
{
public:
    Result SetNullKey(IObject*) override
    {
        std::fprintf(stderr, "TVX_RETURN_EPOINTER_IF_NULL: [%s:%d]\n", __FILE__, __LINE__);
        return TVX_E_POINTER;
    }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
