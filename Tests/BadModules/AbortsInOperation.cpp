// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

#include <cstdlib>

namespace tvx::bad
{

namespace
{

// Ends the process with a signal when it is to write itself without a writer.
class Wrong final : public ForwardingMap
{
public:
    Result Serialize(ISerializer* writer) override
    {
        if (writer == nullptr)
            std::abort();
        return ForwardingMap::Serialize(writer);
    }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
