// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleCatalog.h"

#include <string>
#include <vector>

namespace tvx::host
{

// Whether a library manager would find what an import asks for.
enum class ImportState
{
    Satisfied,
    OptionalMissing,  // nothing fulfils its contract, and the export works without it
    RequiredMissing,  // nothing fulfils its contract, so the export cannot be had
    WrongContract,    // what was probably meant fulfils another contract
};

// What becomes of one import.
struct ResolvedImport
{
    const Import* import;         // borrowed from the catalogue
    ImportState state;            // what came of it
    std::string provider;         // who fulfils it or was probably meant; empty when there is none
    std::string message;          // what the framework says at run time of an import that is not there; else empty
    std::string offeredContract;  // of the provider, when it is not the one that was asked for
};

// What becomes of the imports of one export.
struct ResolvedExport
{
    const Export* entry;                  // borrowed from the catalogue
    std::vector<ResolvedImport> imports;  // in the order of the document
};

// What becomes of the imports of a module of the catalogue, by the documents alone: nothing is loaded. A contract of the
// host's own comes before any module, as with LibraryManager.
// A contract of the same name in another version is taken for the one that was probably meant, and so is one that is the
// identifier of an export.
std::vector<ResolvedExport> ResolveImports(const ModuleCatalog& catalog, std::size_t module);

}  // namespace tvx::host
