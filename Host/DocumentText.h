// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleFile.h"
#include "Host/Outcome.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tvx::host
{

// A text that modules carry in a section of its own.
struct EmbeddedText
{
    std::string_view section;  // its name in the module's file
    std::string_view name;     // for messages
};

// What a module exports and imports.
inline constexpr EmbeddedText DocumentText = {".plugcfg", "configuration document"};

// What a module says of its own build.
inline constexpr EmbeddedText BuildText = {".plugbuild", "build information"};

// How an embedded text lies in the memory of a process that has loaded the module.
struct TextMapping
{
    bool mapped;      // it is there at all
    bool writable;    // the module's code can change it
    bool executable;  // it can be run as code
};

// The exact bytes of a text embedded in a module's file, read without running any of its code.
// Fails: CannotRead, NotAModule, DamagedModule, NoDocument when the module carries no such text.
Outcome<std::string> ReadEmbeddedText(ModuleFile& file, const EmbeddedText& text);

// How such a text is mapped, by what the file says.
// Fails: as ReadEmbeddedText.
Outcome<TextMapping> ReadTextMapping(ModuleFile& file, const EmbeddedText& text);

// The exact bytes of the configuration document embedded in a module's file, read without running any of its code.
// Fails: CannotRead, NotAModule, DamagedModule, NoDocument.
Outcome<std::string> ReadDocumentText(const std::filesystem::path& path);
Outcome<std::string> ReadDocumentText(ModuleFile& file);

}  // namespace tvx::host
