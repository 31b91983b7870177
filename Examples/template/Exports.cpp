// SPDX-License-Identifier: MIT
#include "Greeter.h"
#include "Helpers/ExportTable.h"
#include "Platform/Export.h"

namespace
{

// What Greeter.plugcfg.xml names, with the one object of each.
constexpr tvx::Export Exports[] = {
    {"com.example.greeting.Greeter/1.0", &greeting::GreeterFactory::GetExportInstance},
};

const tvx::ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
