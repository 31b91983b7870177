// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Collections.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

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

}  // namespace

constexpr Export Exports[] = {{CollectionId, &CollectionsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
