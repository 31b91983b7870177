// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/OwnQuery.h"

namespace tvx::bad
{

namespace
{

// Says yes where there is no place for the answer, and keeps the reference.
class Wrong final : public OwnQuery<Wrong>
{
public:
    Result DoQueryInterface(const char* id, void** out) override
    {
        void* ignored = nullptr;
        return IsOwnId(id) ? Give(this, out == nullptr ? &ignored : out) : TVX_E_NOINTERFACE;
    }
};

}  // namespace

constexpr Export Exports[] = {{PlainId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
