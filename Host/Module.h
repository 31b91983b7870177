// SPDX-License-Identifier: MIT
#pragma once

#include "Host/PluginDocument.h"
#include "Interfaces/Module.h"
#include "Interfaces/Ref.h"
#include "Platform/DynamicLibrary.h"

#include <filesystem>

namespace tvx::host
{

// A module mapped into the process; its code has run. Destroying it unmaps the file, so every object of the module has to
// be released before.
class Module
{
public:
    // Maps the file and finds its entry point.
    // Fails: CannotRead, NotAModule … as ReadPluginDocument for a file that is no module, before any code is run;
    // CannotLoad when the system refuses; Misbehaved when there is no GetExport.
    static Outcome<Module> Load(const std::filesystem::path& file);

    // What the module declares.
    const PluginDocument& GetDocument() const { return document_; }

    // The object that the module registered under an export identifier.
    // Fails: Misbehaved when the module gives none.
    Outcome<Ref<IObjectBase>> GetExport(const std::string& id) const;

    // The module's GetExport itself, for callers who look at what it makes of wrong arguments.
    GetExportFunction GetEntryPoint() const { return getExport_; }

private:
    Module(std::string name, PluginDocument document, Platform::DynamicLibrary library, GetExportFunction getExport);

    std::string name_;
    PluginDocument document_;
    Platform::DynamicLibrary library_;
    GetExportFunction getExport_;
};

}  // namespace tvx::host
