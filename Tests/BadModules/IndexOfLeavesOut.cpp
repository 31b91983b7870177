// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Collections.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

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

}  // namespace

constexpr Export Exports[] = {{CollectionId, &CollectionsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
