// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleFile.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tvx::host
{

// Where a number stands in a structure of an ELF file, and how many bytes it has.
struct ElfField
{
    std::size_t offset;  // from the start of the structure
    std::size_t width;   // in bytes
};

// How the numbers of one ELF file are written.
struct ElfEncoding
{
    bool wide;       // the structures are those of 64 bit, not of 32
    bool bigEndian;  // the most significant byte comes first

    // Bytes has to reach to the end of the field.
    std::uint64_t Decode(std::string_view bytes, ElfField field) const;
};

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
    ElfEncoding encoding;              // how its numbers are written
    std::vector<ElfSection> sections;  // in the order of the file
    std::uint64_t nameIndex;           // which section holds the names, unchecked
};

// Reads the table of sections: 32 or 64 bit, little or big endian, whatever this program runs on.
//   sought  what is looked for in the sections, for the message of a failure: "configuration document"
// Fails: CannotRead, DamagedModule, NoDocument when the file has no such table.
Outcome<ElfTable> ReadElfTable(ModuleFile& file, std::string_view sought);

// The error for an ELF file that contradicts itself.
Error ElfDamage(const ModuleFile& file, std::string_view text);

}  // namespace tvx::host
