// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Strings.h"

namespace
{

using namespace tvx;

// Hands out each string without a reference.
class Wrong final : public bad::Strings<Wrong>
{
public:
    Result CreateString(const char* text, IString** out) override
    {
        if (out == nullptr)
            return TVX_E_POINTER;
        const auto value = ToText(text);
        *out = new (String::GetTailSize(value)) String(value);
        return TVX_OK;
    }
};

constexpr Export Exports[] = {{bad::StringId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
