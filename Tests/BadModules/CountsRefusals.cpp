// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OwnQuery.h"

namespace
{

using namespace tvx;

// Counts also for a query that it refuses.
class Wrong final : public bad::OwnQuery<Wrong>
{
public:
    Result DoQueryInterface(const char* id, void** out) override
    {
        if (IsOwnId(id) && out != nullptr)
            return Give(this, out);
        AddRef();
        return TVX_E_NOINTERFACE;
    }
};

constexpr Export Exports[] = {{bad::PlainId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
