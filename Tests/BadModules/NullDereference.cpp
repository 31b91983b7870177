// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Collections.h"

namespace
{

using namespace tvx;

// Relies on the out of GetItem.
class Wrong final : public Collection
{
public:
    Result GetItem(std::uint32_t index, IObject** out) override
    {
        IObject* volatile* const place = out;
        if (index < GetCount())
            *place = nullptr;
        return Collection::GetItem(index, out);
    }
};

constexpr Export Exports[] = {{bad::CollectionId, &bad::CollectionsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
