// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/Module.h"
#include "Platform/DynamicLibrary.h"
#include "Tool/Checks/Trial.h"
#include "Tool/TemporaryFolder.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tvx::check
{

// A module's file that a check maps and unmaps by itself, whatever its document says.
class LoadedFile
{
public:
    // Skips the check when the system refuses the file or when it has no GetExport: there are checks for both. What the
    // module writes meanwhile is left to be taken.
    LoadedFile(Trial& trial, const std::filesystem::path& file);

    // Every object of the module has to be released before.
    void Unload() { library_ = {}; }

    GetExportFunction GetFunction() const { return getExport_; }

    // Null when it is refused. May be called on any thread.
    Ref<IObjectBase> Ask(const std::string& id) const;

private:
    Platform::DynamicLibrary library_;
    GetExportFunction getExport_;
};

// The module, loaded and unloaded by checks that are not about what it writes meanwhile.
LoadedFile LoadQuietly(Trial& trial);
LoadedFile LoadQuietly(Trial& trial, const std::filesystem::path& file);
void UnloadQuietly(Trial& trial, LoadedFile& module);

// The ids of those exports of the document that the module gives: that it gives all of them is a check of its own.
std::vector<std::string> GetGivenIds(Trial& trial);

// Asks for each export and works with it as far as any module allows: interfaces, new objects, an image's locks. All is
// released again; what it writes is left to be taken. Gives how many exports there are. May be called on any thread.
std::size_t UseExports(const LoadedFile& module, const std::vector<std::string>& ids);

// Fails the check when the file is still in the memory of the process.
void ExpectUnmapped(Trial& trial, const std::filesystem::path& file, const std::string& when);

// A copy of the module's file in another folder, under another name.
std::filesystem::path CopyModule(Trial& trial, const tool::TemporaryFolder& folder, const std::string& name);

}  // namespace tvx::check
