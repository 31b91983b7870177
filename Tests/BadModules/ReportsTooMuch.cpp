// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Variants.h"

namespace
{

using namespace tvx;

// Reports a null out where none is due.
class Wrong final : public bad::ForwardingVariants<Wrong>
{
public:
    Result CreateBool(bool value, IVariant** out) override
    {
        TVX_RETURN_EPOINTER_IF_NULL(out);
        return ForwardingVariants::CreateBool(value, out);
    }
};

constexpr Export Exports[] = {{bad::VariantId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
