// SPDX-License-Identifier: MIT
#include "Platform/StandardStreams.h"
#include "Tests/BadModules/Maps.h"

namespace
{

using namespace tvx;

// Tells the world of every null that is written.
class Wrong final : public bad::ForwardingMap
{
public:
    Result SetValue(const char* key, IObject* value) override
    {
        if (key != nullptr && value == nullptr)
            Platform::WriteLine({"null under ", key});
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
