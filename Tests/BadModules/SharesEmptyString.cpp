// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Strings.h"

namespace
{

using namespace tvx;

// Gives the same string for every empty text.
class Wrong final : public bad::Strings<Wrong>
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

constexpr Export Exports[] = {{bad::StringId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
