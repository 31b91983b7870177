// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleFile.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tvx::host
{

// What an ELF file says of one of its sections, as it stands there: nothing of it is checked yet.
struct ElfSection
{
    std::uint64_t name;    // where the name starts in the section of names
    std::uint64_t type;    // what the section holds
    std::uint64_t flags;   // whether it is mapped, and how
    std::uint64_t offset;  // where its bytes start in the file
    std::uint64_t size;    // of its bytes in the file
    std::uint64_t link;    // another section that belongs to it
};

// The table of sections of an ELF file.
struct ElfTable
{
    std::vector<ElfSection> sections;  // in the order of the file
    std::uint64_t nameIndex;           // which section holds the names, unchecked
};

// Reads the table of sections: 32 or 64 bit, little or big endian, whatever this program runs on.
Outcome<ElfTable> ReadElfTable(ModuleFile& file);

// The error for an ELF file that contradicts itself.
Error ElfDamage(const ModuleFile& file, std::string_view text);

}  // namespace tvx::host
