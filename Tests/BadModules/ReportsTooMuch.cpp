// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/Variants.h"

namespace tvx::bad
{

namespace
{

// Reports a null out where none is due.
class Wrong final : public ForwardingVariants<Wrong>
{
public:
    Result CreateBool(bool value, IVariant** out) override
    {
        TVX_RETURN_EPOINTER_IF_NULL(out);
        return ForwardingVariants::CreateBool(value, out);
    }
};

}  // namespace

constexpr Export Exports[] = {{VariantId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
