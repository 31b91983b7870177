// SPDX-License-Identifier: MIT
#pragma once

#include "Host/DocumentText.h"
#include "Host/ModuleFile.h"

#include <string>
#include <string_view>

namespace tvx::host
{

// What every ELF file begins with.
inline constexpr std::string_view ElfMagic = "\177ELF";

// The bytes of the section that holds a text, of a file that starts with ElfMagic, for whatever processor it was made.
Outcome<std::string> ReadElfText(ModuleFile& file, const EmbeddedText& text);

}  // namespace tvx::host
