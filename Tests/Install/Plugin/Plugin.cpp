// SPDX-License-Identifier: MIT
#include "Helpers/ClassImpl.h"
#include "Helpers/ExportTable.h"
#include "Helpers/Singleton.h"
#include "Platform/Export.h"

#include <map>
#include <string>

namespace
{

class Thing final : public tvx::ClassImpl<Thing, tvx::IObject>, public tvx::Singleton<Thing, tvx::IObject>
{
public:
    using Interfaces = tvx::InterfaceList<tvx::IObject, tvx::IObjectBase>;

private:
    // Its templates are unique symbols where nobody hides them, and would keep the module mapped.
    static inline std::map<std::string, std::string> texts_{{"a text that is too long for the string itself", "b"}};
};

constexpr tvx::Export Exports[] = {
    {"test.Thing/1.0", &Thing::GetExportInstance},
};

const tvx::ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
