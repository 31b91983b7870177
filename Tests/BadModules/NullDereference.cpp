// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Collections.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

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

}  // namespace

constexpr Export Exports[] = {{CollectionId, &CollectionsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
