// SPDX-License-Identifier: MIT
#pragma once

#include "Host/BuildInformation.h"
#include "Host/PluginDocument.h"
#include "Interfaces/ISimpleMap.h"

namespace tvx::host
{

// Writes what a plug-in is to answer for itself into map: "id", "name", "subname" and "copyright" from its document, "version"
// and "comment" from its build. What is not said anywhere stays absent.
void WriteMetadata(ISimpleMap& map, const Export& entry, const BuildInformation& build);

}  // namespace tvx::host
