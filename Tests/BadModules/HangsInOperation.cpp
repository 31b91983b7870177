// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"

#include <chrono>
#include <thread>

namespace
{

using namespace tvx;

// Does not come back from writing the empty key.
class Wrong final : public bad::ForwardingMap
{
public:
    Result SetValue(const char* key, IObject* value) override
    {
        if (key != nullptr && *key == '\0')
            std::this_thread::sleep_for(std::chrono::hours(1));
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
