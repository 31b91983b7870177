// SPDX-License-Identifier: MIT
#pragma once

#include "Host/DocumentText.h"
#include "Host/ModuleFile.h"

#include <string>
#include <string_view>
#include <vector>

namespace tvx::host
{

// A format of module files: what they start with, and what reads them.
struct ModuleFormat
{
    // What ReadEmbeddedText does for this format.
    using ReadText = Outcome<std::string> (*)(ModuleFile& file, const EmbeddedText& text);

    // What ReadTextMapping does for it.
    using ReadMapping = Outcome<TextMapping> (*)(ModuleFile& file, const EmbeddedText& text);

    // What ReadExportedSymbols does for it.
    using ReadSymbols = Outcome<std::vector<std::string>> (*)(ModuleFile& file);

    std::string_view magic;   // the first bytes of such a file
    ReadText readText;        // gives an embedded text
    ReadMapping readMapping;  // says how it is mapped
    ReadSymbols readSymbols;  // gives what is exported
};

// The format of a file, by its first bytes.
// Fails: CannotRead, NotAModule.
Outcome<const ModuleFormat*> FindModuleFormat(ModuleFile& file);

}  // namespace tvx::host
