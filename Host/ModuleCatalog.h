// SPDX-License-Identifier: MIT
#pragma once

#include "Host/PluginDocument.h"

#include <filesystem>
#include <string_view>
#include <vector>

namespace tvx::host
{

// A module that was found, with what its document says. Nothing of it has been loaded.
struct InstalledModule
{
    std::filesystem::path file;  // as it was found
    PluginDocument document;     // what it declares
};

// Where an export stands: the module's place in the catalogue and the export in its document.
struct ExportPlace
{
    std::size_t module;   // its index in ModuleCatalog::GetModules
    const Export* entry;  // borrowed from the catalogue; null when there is none
};

// The modules on a search path, in the order in which they were found, read without running any of their code. One thread
// at a time. Where two modules offer the same thing, the one found first is taken.
class ModuleCatalog
{
public:
    // Adds a module file, or the modules of a folder (files whose names end in .tvxlib, by name). A file that was added
    // before is passed over. What cannot be read becomes a problem.
    void Add(const std::filesystem::path& place);

    // Adds the parts of a list with the system's separator of search paths between them; empty parts are passed over.
    void AddSearchPath(std::string_view list);

    // The modules, in the order in which they were found.
    const std::vector<InstalledModule>& GetModules() const { return modules_; }

    // What could not be read on the way, in the order in which it was met.
    const std::vector<Error>& GetProblems() const { return problems_; }

    // Null entry when there is none.
    ExportPlace FindById(std::string_view id) const;
    ExportPlace FindByContract(std::string_view contract) const;
    ExportPlace FindBySerializationId(std::string_view serid) const;

private:
    template <class Matches>
    ExportPlace Find(Matches&& matches) const;

    void AddFolder(const std::filesystem::path& folder);
    void AddFile(const std::filesystem::path& file);

    std::vector<std::filesystem::path> files_;  // what was added, whether it could be read or not
    std::vector<InstalledModule> modules_;
    std::vector<Error> problems_;
};

}  // namespace tvx::host
