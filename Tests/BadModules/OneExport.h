// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ExportTable.h"
#include "Interfaces/IObjectBase.h"
#include "Platform/Export.h"

// The frame of a module with one export, for the one source that includes it and says in Exports what it gives.
namespace tvx::bad
{

// A constant expression: it is there before it is read at load.
extern const Export Exports[1];

const ExportsAtLoad AtLoad(Exports);

}  // namespace tvx::bad

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(tvx::bad::Exports, id, out);
}
