// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Collections.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

// Gives the name for the subname and the subname for the name, as a table in the wrong order does.
class Wrong : public TVXPluginImpl
{
public:
    Result GetName(IString** out) override { return TVXPluginImpl::GetSubname(out); }
    Result GetSubname(IString** out) override { return TVXPluginImpl::GetName(out); }

protected:
    ~Wrong() = default;
};

}  // namespace

constexpr Export Exports[] = {{CollectionId, &CollectionsOf<Collection, Wrong>::GetExportInstance}};

}  // namespace tvx::bad
