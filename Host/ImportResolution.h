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
    WrongContract,    // what was probably meant fulfils another contract, and to the manager that is nothing
    ProviderMissing,  // what fulfils its contract needs something itself that nothing fulfils, and cannot be had
};

// A required import of an export that others import.
struct MissingImport
{
    std::string exportName;  // whose import it is
    const Import* import;    // borrowed from the catalogue
};

// What becomes of one import.
struct ResolvedImport
{
    const Import* import;                        // borrowed from the catalogue
    ImportState state = ImportState::Satisfied;  // what came of it
    std::string provider = {};                   // who fulfils it or was probably meant; empty when there is none
    std::string message = {};          // what the framework says at run time of an import that is not there; else empty
    std::string offeredContract = {};  // of the provider, when it is not the one that was asked for

    // What is not there further down. The last one is what nobody fulfils: for its sake the export of that name cannot be had,
    // and that is what the one before it goes without. Nothing else is missing when the import itself is satisfied.
    std::vector<MissingImport> missing = {};
};

// What becomes of the imports of one export.
struct ResolvedExport
{
    const Export* entry;                  // borrowed from the catalogue
    std::vector<ResolvedImport> imports;  // in the order of the document
};

// Whether an export goes without an import that it requires.
bool IsRequiredAndMissing(const ResolvedImport& resolved);

// What becomes of the imports of a module of the catalogue, by the documents alone: nothing is loaded. It foresees what
// LibraryManager does: a contract of the host's own comes before any module, and an export can be had as soon as somebody
// fulfils each of its required imports, whether or not that one can be had. So exports that import each other can.
// A contract of the same name in another version is taken for the one that was probably meant, and so is one that is the
// identifier of an export.
std::vector<ResolvedExport> ResolveImports(const ModuleCatalog& catalog, std::size_t module);

}  // namespace tvx::host
