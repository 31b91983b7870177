// SPDX-License-Identifier: MIT
#pragma once

#include "Host/DocumentText.h"
#include "Host/ModuleFile.h"

#include <string>

namespace tvx::host
{

// The bytes of the section that holds a text, of an ELF file for whatever processor.
Outcome<std::string> ReadElfText(ModuleFile& file, const EmbeddedText& text);

// How that section is mapped.
Outcome<TextMapping> ReadElfTextMapping(ModuleFile& file, const EmbeddedText& text);

}  // namespace tvx::host
