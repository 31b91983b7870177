// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"

namespace
{

using namespace tvx;

// Refuses a null key without its report line.
class Wrong final : public bad::ForwardingMap
{
public:
    Result SetValue(const char* key, IObject* value) override
    {
        return key == nullptr ? TVX_E_POINTER : ForwardingMap::SetValue(key, value);
    }
};

constexpr Export Exports[] = {{bad::MapId, &bad::MapsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
