// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/Strings.h"

namespace tvx::bad
{

namespace
{

// Hands out each string without a reference.
class Wrong final : public Strings<Wrong>
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

}  // namespace

constexpr Export Exports[] = {{StringId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
