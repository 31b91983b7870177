// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OwnQuery.h"

namespace
{

using namespace tvx;

// Says yes where there is no place for the answer, and keeps the reference.
class Wrong final : public bad::OwnQuery<Wrong>
{
public:
    Result DoQueryInterface(const char* id, void** out) override
    {
        void* ignored = nullptr;
        return IsOwnId(id) ? Give(this, out == nullptr ? &ignored : out) : TVX_E_NOINTERFACE;
    }
};

constexpr Export Exports[] = {{bad::PlainId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
