// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Collections.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

// Keeps the reference on what is removed last.
class Wrong final : public Collection
{
public:
    Result RemoveLast() override
    {
        Ref<IObject> item;
        if (GetCount() > 0)
            static_cast<void>(GetItem(GetCount() - 1, item.Receive()));
        const Result result = Collection::RemoveLast();
        static_cast<void>(item.Detach());
        return result;
    }
};

}  // namespace

constexpr Export Exports[] = {{CollectionId, &CollectionsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
