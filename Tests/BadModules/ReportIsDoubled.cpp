// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"

namespace
{

using namespace tvx;

// Reports a null key twice.
class Wrong final : public bad::ForwardingMap
{
public:
    Result SetValue(const char* key, IObject* value) override
    {
        if (key == nullptr)
            WriteReport("TVX_RETURN_EPOINTER_IF_NULL", __FILE__, __LINE__);
        return ForwardingMap::SetValue(key, value);
    }
};

constexpr Export Exports[] = {{bad::MapId, &bad::MapsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
