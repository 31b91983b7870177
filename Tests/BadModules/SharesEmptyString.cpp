// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/Strings.h"

namespace tvx::bad
{

namespace
{

// Gives the same string for every empty text.
class Wrong final : public Strings<Wrong>
{
public:
    Result CreateString(const char* text, IString** out) override
    {
        if (out == nullptr || !ToText(text).empty())
            return HandOutNew<String>(out, ToText(text));
        HandOut(empty_.Get(), out);
        return TVX_OK;
    }

private:
    Ref<String> empty_ = MakeRef<String>(std::string_view());
};

}  // namespace

constexpr Export Exports[] = {{StringId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
