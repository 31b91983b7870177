// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/Ref.h"

#include <string>
#include <utility>
#include <vector>

namespace tvx::host
{

class LibraryManager;

// The identifier of the export that makes settings maps.
constexpr const char SettingsMapExport[] = "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1";

// A new settings map, in batch updating mode, out of the export that makes them.
// Fails: as LibraryManager::GetExport, and Misbehaved when what is made is no settings map.
Outcome<Ref<ISimpleMap>> MakeSettingsMap(LibraryManager& manager);

// The same, out of that export's factory at hand.
// Fails: Misbehaved when what is made is no settings map.
Outcome<Ref<ISimpleMap>> MakeSettingsMap(IFactory& factory);

// Keys with their values.
using SettingsEntries = std::vector<std::pair<std::string, std::string>>;

// All entries of map, in its order.
// Fails: Misbehaved when the map gives no iterator, or its iterator a key without a value.
Outcome<SettingsEntries> ReadEntries(ISimpleMap& map);

}  // namespace tvx::host
