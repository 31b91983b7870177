// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Collections.h"

namespace
{

using namespace tvx;

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

constexpr Export Exports[] = {{bad::CollectionId, &bad::CollectionsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
