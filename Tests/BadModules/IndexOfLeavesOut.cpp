// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Collections.h"

namespace
{

using namespace tvx;

// Leaves the index of what it does not hold as it is.
class Wrong final : public Collection
{
public:
    Result IndexOf(IObject* item, std::uint32_t* out) override
    {
        const std::uint32_t before = out == nullptr ? 0 : *out;
        const Result result = Collection::IndexOf(item, out);
        if (result == TVX_E_FAIL && out != nullptr)
            *out = before;
        return result;
    }
};

constexpr Export Exports[] = {{bad::CollectionId, &bad::CollectionsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
