// SPDX-License-Identifier: MIT
#pragma once

#include "Tests/BadModules/Plain.h"

// The export of a module whose GetExport is wrong, for the one source that includes it and adds that.
namespace tvx::bad
{

constexpr Export Exports[] = {{PlainId, &Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

// What a right GetExport does.
inline Result GivePlain(const char* id, IObjectBase** out)
{
    return GiveExport(Exports, id, out);
}

}  // namespace tvx::bad
