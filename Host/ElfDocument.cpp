// SPDX-License-Identifier: MIT
#include "Host/ElfDocument.h"

#include "Host/ElfTable.h"

#include <cstddef>
#include <cstdint>

namespace tvx::host
{
namespace
{

constexpr std::string_view DocumentName{".plugcfg\0", 9};
constexpr std::uint64_t TypeUnused = 0;
constexpr std::uint64_t TypeStrings = 3;
constexpr std::uint64_t TypeWithoutBytes = 8;
constexpr std::uint64_t FlagCompressed = 0x800;

// All names of the sections, each ended by a NUL: the check of the last one bounds every name.
Outcome<std::string> ReadNames(ModuleFile& file, const ElfTable& table)
{
    if (table.nameIndex >= table.sections.size())
    {
        return ElfDamage(file, "its section names are in a section that does not exist");
    }
    const ElfSection& section = table.sections[static_cast<std::size_t>(table.nameIndex)];
    if (section.type != TypeStrings)
    {
        return ElfDamage(file, "its section names are in a section of another type");
    }
    auto names = file.Read("table of section names", section.offset, section.size);
    if (names && !names->ends_with('\0'))
    {
        return ElfDamage(file, "the last of its section names is not ended");
    }
    return names;
}

Outcome<ElfSection> FindDocument(const ModuleFile& file, const ElfTable& table, std::string_view names)
{
    const ElfSection* found = nullptr;
    for (const ElfSection& section : table.sections)
    {
        if (section.type == TypeUnused)
        {
            continue;
        }
        if (section.name >= names.size())
        {
            return ElfDamage(file, "a section's name is outside the table of section names");
        }
        if (!names.substr(static_cast<std::size_t>(section.name)).starts_with(DocumentName))
        {
            continue;
        }
        if (found)
        {
            return ElfDamage(file, "it has more than one section .plugcfg");
        }
        found = &section;
    }
    if (!found)
    {
        return file.Fail(ErrorKind::NoDocument, "has no configuration document");
    }
    return *found;
}

Outcome<std::string> ReadContent(ModuleFile& file, const ElfSection& document)
{
    if (document.type == TypeWithoutBytes)
    {
        return ElfDamage(file, "its configuration document has no bytes in the file");
    }
    if ((document.flags & FlagCompressed) != 0)
    {
        return ElfDamage(file, "its configuration document is compressed");
    }
    return file.Read("configuration document", document.offset, document.size);
}

}  // namespace

Outcome<std::string> ReadElfDocument(ModuleFile& file)
{
    const auto table = ReadElfTable(file);
    if (!table)
    {
        return table.GetError();
    }
    const auto names = ReadNames(file, *table);
    if (!names)
    {
        return names.GetError();
    }
    const auto document = FindDocument(file, *table, *names);
    if (!document)
    {
        return document.GetError();
    }
    return ReadContent(file, *document);
}

}  // namespace tvx::host
