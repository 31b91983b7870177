// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OwnQuery.h"

namespace
{

using namespace tvx;

// Compares what stands before the slash.
class Wrong final : public bad::OwnQuery<Wrong>
{
public:
    Result DoQueryInterface(const char* id, void** out) override
    {
        if (id == nullptr || out == nullptr)
            return TVX_E_NOINTERFACE;
        const std::string_view asked = id;
        const bool isObject = asked.starts_with("com.talvere.general.tvx.IObject/");
        return isObject || IsOwnId(id) ? Give(this, out) : TVX_E_NOINTERFACE;
    }
};

constexpr Export Exports[] = {{bad::PlainId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
