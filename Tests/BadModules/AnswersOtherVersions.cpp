// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/OwnQuery.h"

namespace tvx::bad
{

namespace
{

// Compares what stands before the slash.
class Wrong final : public OwnQuery<Wrong>
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

}  // namespace

constexpr Export Exports[] = {{PlainId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
