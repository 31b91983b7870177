// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"

namespace
{

using namespace tvx;

// Leaves the out of a key that is not there as it is.
class Wrong final : public bad::ForwardingMap
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

constexpr Export Exports[] = {{bad::MapId, &bad::MapsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
