// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleFile.h"

#include <string>
#include <string_view>

namespace tvx::host
{

inline constexpr std::string_view ElfMagic = "\177ELF";

// The bytes of the section .plugcfg of a file that starts with ElfMagic, for whatever processor it was made.
Outcome<std::string> ReadElfDocument(ModuleFile& file);

}  // namespace tvx::host
