// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Strings.h"

namespace
{

using namespace tvx;

// Hands out each string with one reference too many.
class Wrong final : public bad::Strings<Wrong>
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

constexpr Export Exports[] = {{bad::StringId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
