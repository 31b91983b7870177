// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

#include <chrono>
#include <thread>

namespace tvx::bad
{

namespace
{

// Does not come back from writing the empty key.
class Wrong final : public ForwardingMap
{
public:
    Result SetValue(const char* key, IObject* value) override
    {
        if (key != nullptr && *key == '\0')
            std::this_thread::sleep_for(std::chrono::hours(1));
        return ForwardingMap::SetValue(key, value);
    }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
