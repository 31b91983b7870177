// SPDX-License-Identifier: MIT
#include "Host/ElfDocument.h"

#include "Host/ElfTable.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tvx::host
{
namespace
{

constexpr std::uint64_t TypeUnused = 0;
constexpr std::uint64_t TypeStrings = 3;
constexpr std::uint64_t TypeWithoutBytes = 8;
constexpr std::uint64_t FlagWritable = 0x1;
constexpr std::uint64_t FlagMapped = 0x2;
constexpr std::uint64_t FlagExecutable = 0x4;
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

// Whether the name that starts at names is the whole of name.
bool IsNamed(std::string_view names, std::string_view name)
{
    return names.starts_with(name) && names[name.size()] == '\0';
}

Outcome<ElfSection> FindText(const ModuleFile& file, const ElfTable& table, std::string_view names,
                             const EmbeddedText& text)
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
        if (!IsNamed(names.substr(static_cast<std::size_t>(section.name)), text.section))
        {
            continue;
        }
        if (found)
        {
            return ElfDamage(file, "it has more than one section " + std::string(text.section));
        }
        found = &section;
    }
    if (!found)
    {
        return file.Fail(ErrorKind::NoDocument, "has no " + std::string(text.name));
    }
    return *found;
}

Outcome<std::string> ReadContent(ModuleFile& file, const ElfSection& section, const EmbeddedText& text)
{
    if (section.type == TypeWithoutBytes)
    {
        return ElfDamage(file, "its " + std::string(text.name) + " has no bytes in the file");
    }
    if ((section.flags & FlagCompressed) != 0)
    {
        return ElfDamage(file, "its " + std::string(text.name) + " is compressed");
    }
    return file.Read(text.name, section.offset, section.size);
}

Outcome<ElfSection> ReadSection(ModuleFile& file, const EmbeddedText& text)
{
    const auto table = ReadElfTable(file, text.name);
    if (!table)
    {
        return table.GetError();
    }
    const auto names = ReadNames(file, *table);
    if (!names)
    {
        return names.GetError();
    }
    return FindText(file, *table, *names, text);
}

}  // namespace

Outcome<std::string> ReadElfText(ModuleFile& file, const EmbeddedText& text)
{
    const auto section = ReadSection(file, text);
    if (!section)
    {
        return section.GetError();
    }
    return ReadContent(file, *section, text);
}

Outcome<TextMapping> ReadElfTextMapping(ModuleFile& file, const EmbeddedText& text)
{
    const auto section = ReadSection(file, text);
    if (!section)
    {
        return section.GetError();
    }
    return TextMapping{(section->flags & FlagMapped) != 0, (section->flags & FlagWritable) != 0,
                       (section->flags & FlagExecutable) != 0};
}

}  // namespace tvx::host
