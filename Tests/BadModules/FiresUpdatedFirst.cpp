// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Collections.h"

namespace
{

using namespace tvx;

// Tells that something has changed before it tells of a move.
class Wrong final : public Collection
{
public:
    void FireItemMoved(IObject*) override { isMoving_ = true; }
    void FireUpdated(IObject* item) override
    {
        Collection::FireUpdated(item);
        if (isMoving_)
        {
            isMoving_ = false;
            Collection::FireItemMoved(item);
        }
    }

private:
    bool isMoving_ = false;
};

constexpr Export Exports[] = {{bad::CollectionId, &bad::CollectionsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
