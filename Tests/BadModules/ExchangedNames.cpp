// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Collections.h"

namespace
{

using namespace tvx;

// Gives the name for the subname and the subname for the name, as a table in the wrong order does.
class Wrong : public TVXPluginImpl
{
public:
    Result GetName(IString** out) override { return TVXPluginImpl::GetSubname(out); }
    Result GetSubname(IString** out) override { return TVXPluginImpl::GetName(out); }

protected:
    ~Wrong() = default;
};

constexpr Export Exports[] = {{bad::CollectionId, &bad::CollectionsOf<Collection, Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
