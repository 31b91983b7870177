// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

#include <cstdlib>

namespace tvx::bad
{

namespace
{

// Ends the process, as if all were well, when a null key is looked up.
class Wrong final : public ForwardingMap
{
public:
    Result GetValue(const char* key, IObject** out) override
    {
        if (key == nullptr && out != nullptr)
            std::exit(0);
        return ForwardingMap::GetValue(key, out);
    }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
