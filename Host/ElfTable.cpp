// SPDX-License-Identifier: MIT
#include "Host/ElfTable.h"

#include <cstddef>
#include <limits>
#include <string>
#include <utility>

namespace tvx::host
{
namespace
{

constexpr std::uint64_t NameIndexElsewhere = 0xFFFF;

// Where the two classes keep what is needed here: first the fields of the header, then those of a section's entry.
struct Layout
{
    std::size_t headerSize;
    ElfField tableOffset;
    ElfField entrySize;
    ElfField sectionCount;
    ElfField nameIndex;

    std::size_t sectionSize;
    ElfField name;
    ElfField type;
    ElfField flags;
    ElfField offset;
    ElfField size;
    ElfField link;
};

constexpr Layout Layout32{52,     {32, 4}, {46, 2}, {48, 2}, {50, 2}, 40,
                          {0, 4}, {4, 4},  {8, 4},  {16, 4}, {20, 4}, {24, 4}};
constexpr Layout Layout64{64,     {40, 8}, {58, 2}, {60, 2}, {62, 2}, 64,
                          {0, 4}, {4, 4},  {8, 8},  {24, 8}, {32, 8}, {40, 4}};

const Layout& GetLayout(const ElfEncoding& encoding)
{
    return encoding.wide ? Layout64 : Layout32;
}

ElfSection DecodeSection(const ElfEncoding& encoding, std::string_view entry)
{
    const Layout& layout = GetLayout(encoding);
    return {encoding.Decode(entry, layout.name),  encoding.Decode(entry, layout.type),
            encoding.Decode(entry, layout.flags), encoding.Decode(entry, layout.offset),
            encoding.Decode(entry, layout.size),  encoding.Decode(entry, layout.link)};
}

Outcome<ElfEncoding> ReadEncoding(ModuleFile& file)
{
    const auto identity = file.Read("ELF header", 0, 16);
    if (!identity)
    {
        return identity.GetError();
    }
    const char width = (*identity)[4];
    const char order = (*identity)[5];
    if (width != 1 && width != 2)
    {
        return ElfDamage(file, "its ELF class is neither 32 nor 64 bit");
    }
    if (order != 1 && order != 2)
    {
        return ElfDamage(file, "its ELF byte order is neither little nor big endian");
    }
    return ElfEncoding{width == 2, order == 2};
}

Outcome<std::vector<ElfSection>> ReadSections(ModuleFile& file, const ElfEncoding& encoding, std::uint64_t offset,
                                              std::uint64_t count)
{
    const std::size_t entrySize = GetLayout(encoding).sectionSize;
    const bool fits = count <= file.GetSize() / entrySize;
    const auto bytes =
        file.Read("section table", offset, fits ? count * entrySize : std::numeric_limits<std::uint64_t>::max());
    if (!bytes)
    {
        return bytes.GetError();
    }
    std::vector<ElfSection> sections;
    sections.reserve(static_cast<std::size_t>(count));
    for (std::size_t start = 0; start < bytes->size(); start += entrySize)
    {
        sections.push_back(DecodeSection(encoding, std::string_view(*bytes).substr(start, entrySize)));
    }
    return sections;
}

// A count or an index that is too big for the header's 16 bits stands in the table's first entry, which names no
// section of its own.
Outcome<ElfTable> ReadTable(ModuleFile& file, const ElfEncoding& encoding, std::string_view sought)
{
    const Layout& layout = GetLayout(encoding);
    const auto header = file.Read("ELF header", 0, layout.headerSize);
    if (!header)
    {
        return header.GetError();
    }
    const std::uint64_t offset = encoding.Decode(*header, layout.tableOffset);
    if (offset == 0)
    {
        return file.Fail(ErrorKind::NoDocument, "has no " + std::string(sought) + ": it has no section table");
    }
    if (encoding.Decode(*header, layout.entrySize) != layout.sectionSize)
    {
        return ElfDamage(file, "the entries of its section table have a wrong size");
    }
    const auto first = ReadSections(file, encoding, offset, 1);
    if (!first)
    {
        return first.GetError();
    }
    const std::uint64_t count = encoding.Decode(*header, layout.sectionCount);
    const std::uint64_t nameIndex = encoding.Decode(*header, layout.nameIndex);
    auto sections = ReadSections(file, encoding, offset, count != 0 ? count : first->front().size);
    if (!sections)
    {
        return sections.GetError();
    }
    return ElfTable{encoding, *std::move(sections), nameIndex != NameIndexElsewhere ? nameIndex : first->front().link};
}

}  // namespace

std::uint64_t ElfEncoding::Decode(std::string_view bytes, ElfField field) const
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < field.width; ++i)
    {
        const std::size_t index = bigEndian ? i : field.width - 1 - i;
        number = number << 8 | static_cast<unsigned char>(bytes[field.offset + index]);
    }
    return number;
}

Outcome<ElfTable> ReadElfTable(ModuleFile& file, std::string_view sought)
{
    const auto encoding = ReadEncoding(file);
    if (!encoding)
    {
        return encoding.GetError();
    }
    return ReadTable(file, *encoding, sought);
}

Error ElfDamage(const ModuleFile& file, std::string_view text)
{
    return file.Fail(ErrorKind::DamagedModule, "is a damaged module: " + std::string(text));
}

}  // namespace tvx::host
