// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"

namespace
{

using namespace tvx;

// Reports a null key by the right code and the wrong name.
class Wrong final : public bad::ForwardingMap
{
public:
    Result SetValue(const char* key, IObject* value) override
    {
        if (key != nullptr)
            return ForwardingMap::SetValue(key, value);
        WriteReport("TVX_RETURN_FAIL_IF_NULL", __FILE__, __LINE__);
        return TVX_E_POINTER;
    }
};

constexpr Export Exports[] = {{bad::MapId, &bad::MapsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
