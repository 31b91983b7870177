// SPDX-License-Identifier: MIT
#include "Helpers/ExportTable.h"
#include "Host/JsonSerializer/JsonSerializerFactory.h"
#include "Platform/Export.h"

namespace
{

constexpr tvx::Export Exports[] = {
    {tvx::host::JsonSerializerFactory::ExportId, &tvx::host::JsonSerializerFactory::GetExportInstance},
};

const tvx::ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
