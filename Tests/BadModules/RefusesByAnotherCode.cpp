// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OwnQuery.h"

namespace
{

using namespace tvx;

// Refuses as if something had gone wrong.
class Wrong final : public bad::OwnQuery<Wrong>
{
public:
    Result DoQueryInterface(const char* id, void** out) override
    {
        return IsOwnId(id) && out != nullptr ? Give(this, out) : TVX_E_FAIL;
    }
};

constexpr Export Exports[] = {{bad::PlainId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
