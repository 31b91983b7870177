// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/OwnQuery.h"

namespace tvx::bad
{

namespace
{

// Takes the beginning of an identifier for the identifier.
class Wrong final : public OwnQuery<Wrong>
{
public:
    Result DoQueryInterface(const char* id, void** out) override
    {
        if (id == nullptr || out == nullptr || *id == '\0' || !std::string_view(IObject::Id).starts_with(id))
            return id != nullptr && out != nullptr && IsOwnId(id) ? Give(this, out) : TVX_E_NOINTERFACE;
        return Give(this, out);
    }
};

}  // namespace

constexpr Export Exports[] = {{PlainId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
