// SPDX-License-Identifier: MIT
#include "Platform/StandardStreams.h"
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

// Tells the world of every null that is written.
class Wrong final : public ForwardingMap
{
public:
    Result SetValue(const char* key, IObject* value) override
    {
        if (key != nullptr && value == nullptr)
            Platform::WriteLine({"null under ", key});
        return ForwardingMap::SetValue(key, value);
    }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
