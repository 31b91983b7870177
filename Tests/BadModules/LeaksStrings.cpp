// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/Strings.h"

namespace tvx::bad
{

namespace
{

// Hands out each string with one reference too many.
class Wrong final : public Strings<Wrong>
{
public:
    Result CreateString(const char* text, IString** out) override
    {
        const Result result = HandOutNew<String>(out, ToText(text));
        if (result == TVX_OK)
            (*out)->AddRef();
        return result;
    }
};

}  // namespace

constexpr Export Exports[] = {{StringId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
