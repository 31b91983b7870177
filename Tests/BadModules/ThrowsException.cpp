// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"

#include <stdexcept>

namespace
{

using namespace tvx;

// Throws across the interface when a null key is written.
class Wrong final : public bad::ForwardingMap
{
public:
    Result SetValue(const char* key, IObject* value) override
    {
        if (key == nullptr)
            throw std::invalid_argument("there is no key");
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
