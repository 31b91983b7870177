// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

// Leaves the out of a key that is not there as it is.
class Wrong final : public ForwardingMap
{
public:
    Result GetValue(const char* key, IObject** out) override
    {
        Ref<IObject> value;
        const Result result = ForwardingMap::GetValue(key, out == nullptr ? nullptr : value.Receive());
        if (result == TVX_S_VALUE)
            *out = value.Detach();
        return result;
    }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
