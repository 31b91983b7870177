// SPDX-License-Identifier: MIT
#include "CounterFactory.h"
#include "Helpers/ExportTable.h"
#include "Platform/Export.h"

namespace
{

// What Counting.plugcfg.xml names, with the one object of each.
constexpr tvx::Export Exports[] = {
    {"com.example.counting.Counter/1.0", &counting::CounterFactory::GetExportInstance},
};

const tvx::ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
