// SPDX-License-Identifier: MIT
#include "Platform/Environment.h"
#include "Tool/Commands.h"

#include <cstdlib>

namespace tvx::tool
{

namespace
{

// Where the program was built, there is no such folder.
void AddInstalledModules(host::ModuleCatalog& catalog, const std::filesystem::path& programFolder)
{
    const auto folder = (programFolder / TVX_MODULES_FROM_PROGRAM).lexically_normal();
    std::error_code failed;
    if (std::filesystem::is_directory(folder, failed))
        catalog.Add(folder);
}

}  // namespace

void SearchOptions::AddTo(CLI::App& command)
{
    command
        .add_option("-p,--path", paths_, "A module or a folder of modules, looked at before TVX_PATH; may be repeated")
        ->type_name("PLACE")
        ->allow_extra_args(false);
}

host::ModuleCatalog SearchOptions::MakeCatalog(const std::vector<std::string>& first) const
{
    host::ModuleCatalog catalog;
    for (const auto& file : first)
        catalog.Add(file);
    for (const auto& path : paths_)
        catalog.Add(path);
    if (const char* const searchPath = std::getenv("TVX_PATH"))
        catalog.AddSearchPath(searchPath);
    const auto folder = Platform::GetProgramFolder();
    if (folder.empty())
        return catalog;
    catalog.Add(folder);
    AddInstalledModules(catalog, folder);
    return catalog;
}

}  // namespace tvx::tool
