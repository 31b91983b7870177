// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/Ref.h"

namespace tvx::host
{

class LibraryManager;

constexpr const char SettingsMapExport[] = "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1";

// A new settings map, in batch updating mode, out of the export that makes them.
// Fails: as LibraryManager::GetExport, and Misbehaved when what is made is no settings map.
Outcome<Ref<ISimpleMap>> MakeSettingsMap(LibraryManager& manager);

}  // namespace tvx::host
