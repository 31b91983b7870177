// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Host/LibraryManager.h"
#include "Interfaces/ISimpleMap.h"

#include <memory>

namespace tvx::tool
{

// A library manager and an empty settings map made through it, which goes before the manager.
class SettingsSession
{
public:
    // Fails: as LibraryManager, and Misbehaved when the factory makes no settings map.
    static host::Outcome<std::unique_ptr<SettingsSession>> Open(host::ModuleCatalog catalog);

    host::LibraryManager& GetManager() { return manager_; }
    ISimpleMap& GetMap() { return *map_; }

private:
    explicit SettingsSession(host::ModuleCatalog catalog) : manager_(std::move(catalog)) {}

    host::LibraryManager manager_;
    Ref<ISimpleMap> map_;
};

}  // namespace tvx::tool
