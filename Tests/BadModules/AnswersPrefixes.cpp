// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OwnQuery.h"

namespace
{

using namespace tvx;

// Takes the beginning of an identifier for the identifier.
class Wrong final : public bad::OwnQuery<Wrong>
{
public:
    Result DoQueryInterface(const char* id, void** out) override
    {
        if (id == nullptr || out == nullptr || *id == '\0' || !std::string_view(IObject::Id).starts_with(id))
            return id != nullptr && out != nullptr && IsOwnId(id) ? Give(this, out) : TVX_E_NOINTERFACE;
        return Give(this, out);
    }
};

constexpr Export Exports[] = {{bad::PlainId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
