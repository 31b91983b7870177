// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"

#include <cstdio>

namespace
{

using namespace tvx;

// Reports a null key on standard error.
class Wrong final : public bad::ForwardingMap
{
public:
    Result SetValue(const char* key, IObject* value) override
    {
        if (key != nullptr)
            return ForwardingMap::SetValue(key, value);
        std::fprintf(stderr, "TVX_RETURN_EPOINTER_IF_NULL: [%s:%d]\n", __FILE__, __LINE__);
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
