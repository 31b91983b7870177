// SPDX-License-Identifier: MIT
#pragma once

#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/Plain.h"

// A whole module that keeps every promise, for the one source that includes it and adds what is wrong.
namespace tvx::bad
{

constexpr Export Exports[] = {{PlainId, &Plain::GetExportInstance}};

}  // namespace tvx::bad
