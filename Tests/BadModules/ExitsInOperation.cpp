// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"

#include <cstdlib>

namespace
{

using namespace tvx;

// Ends the process, as if all were well, when a null key is looked up.
class Wrong final : public bad::ForwardingMap
{
public:
    Result GetValue(const char* key, IObject** out) override
    {
        if (key == nullptr && out != nullptr)
            std::exit(0);
        return ForwardingMap::GetValue(key, out);
    }
};

constexpr Export Exports[] = {{bad::MapId, &bad::MapsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
