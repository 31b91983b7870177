// SPDX-License-Identifier: MIT
#pragma once

#include "Host/LibraryManager.h"

#include <cstdlib>
#include <iostream>

namespace tvx::bench
{

// The module as a host sees it, loaded once for the whole run.
inline host::LibraryManager& GetManager()
{
    static host::LibraryManager manager(
        []
        {
            host::ModuleCatalog catalog;
            catalog.Add(TVX_MODULE_FOLDER);
            return catalog;
        }());
    return manager;
}

// An export as the interface that it promises; ends the run when it cannot be had.
template <class Interface>
Ref<Interface> GetExport(const char* id)
{
    auto wanted = GetManager().GetExportAs<Interface>(id);
    if (wanted)
        return *wanted;
    std::cerr << wanted.GetError().message << '\n';
    std::exit(1);
}

}  // namespace tvx::bench
