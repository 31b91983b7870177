// SPDX-License-Identifier: MIT
#pragma once

#include "Tests/BadModules/Plain.h"

// A whole module that keeps every promise, for the one source that includes it and adds what is wrong.
namespace tvx::bad
{

constexpr Export Exports[] = {{PlainId, &Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace tvx::bad

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(tvx::bad::Exports, id, out);
}
