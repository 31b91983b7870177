// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObjectBase.h"

namespace tvx
{

// The one function that a module exports, under the name "GetExport" with C linkage: gives the object that the module
// registered under an export identifier, always the same one.
//   id   borrowed; compared byte for byte
//   out  receives one reference, owned by the caller, or null when there is no such export
// Threads: any, once the module is loaded. Fails: -1 without a report when id is unknown or id or out is null.
using GetExportFunction = Result (*)(const char* id, IObjectBase** out);

// The name under which a module exports it.
constexpr const char GetExportName[] = "GetExport";

}  // namespace tvx
