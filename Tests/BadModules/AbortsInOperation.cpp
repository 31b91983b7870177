// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"

#include <cstdlib>

namespace
{

using namespace tvx;

// Ends the process with a signal when it is to write itself without a writer.
class Wrong final : public bad::ForwardingMap
{
public:
    Result Serialize(ISerializer* writer) override
    {
        if (writer == nullptr)
            std::abort();
        return ForwardingMap::Serialize(writer);
    }
};

constexpr Export Exports[] = {{bad::MapId, &bad::MapsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
