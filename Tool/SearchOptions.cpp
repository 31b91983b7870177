// SPDX-License-Identifier: MIT
#include "Platform/Environment.h"
#include "Tool/Commands.h"

#include <cstdlib>

namespace tvx::tool
{

void SearchOptions::AddTo(CLI::App& command)
{
    command
        .add_option("-p,--path", paths_, "A module or a folder of modules, looked at before TVX_PATH; may be repeated")
        ->type_name("PLACE")
        ->allow_extra_args(false);
}

host::ModuleCatalog SearchOptions::MakeCatalog() const
{
    host::ModuleCatalog catalog;
    for (const auto& path : paths_)
        catalog.Add(path);
    if (const char* const searchPath = std::getenv("TVX_PATH"))
        catalog.AddSearchPath(searchPath);
    const auto folder = Platform::GetProgramFolder();
    if (!folder.empty())
        catalog.Add(folder);
    return catalog;
}

}  // namespace tvx::tool
