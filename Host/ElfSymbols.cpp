// SPDX-License-Identifier: MIT
#include "Host/ElfSymbols.h"

#include "Host/ElfTable.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace tvx::host
{
namespace
{

constexpr std::uint64_t TypeStrings = 3;
constexpr std::uint64_t TypeDynamicSymbols = 11;

constexpr std::uint64_t SectionUndefined = 0;
constexpr std::uint64_t SectionAbsolute = 0xFFF1;  // the names of versions, which stand for no code and no data

// Where the two classes keep what is needed here of a symbol.
struct Layout
{
    std::size_t size;
    ElfField name;
    ElfField info;
    ElfField other;
    ElfField section;
};

constexpr Layout Layout32{16, {0, 4}, {12, 1}, {13, 1}, {14, 2}};
constexpr Layout Layout64{24, {0, 4}, {4, 1}, {5, 1}, {6, 2}};

// The table of symbols with what it takes to read it.
struct Symbols
{
    ElfEncoding encoding;
    const Layout& layout;
    std::string entries;
    std::string names;  // each ended by a NUL: the last one bounds every name
};

bool IsShown(const Symbols& symbols, std::string_view entry)
{
    constexpr std::uint64_t global = 1, weak = 2, unique = 10;
    constexpr std::uint64_t internal = 1, hidden = 2;
    const auto binding = symbols.encoding.Decode(entry, symbols.layout.info) >> 4;
    const auto visibility = symbols.encoding.Decode(entry, symbols.layout.other) & 3;
    const auto section = symbols.encoding.Decode(entry, symbols.layout.section);
    return (binding == global || binding == weak || binding == unique) && visibility != internal &&
           visibility != hidden && section != SectionUndefined && section != SectionAbsolute;
}

// The place of the one table of dynamic symbols among the sections; their number when there is none.
Outcome<std::size_t> FindTable(const ModuleFile& file, const ElfTable& table)
{
    const auto isTable = [](const ElfSection& section) { return section.type == TypeDynamicSymbols; };
    const auto begin = table.sections.begin();
    const auto found = std::find_if(begin, table.sections.end(), isTable);
    if (std::count_if(found, table.sections.end(), isTable) > 1)
    {
        return ElfDamage(file, "it has more than one table of dynamic symbols");
    }
    return static_cast<std::size_t>(found - begin);
}

Outcome<std::string> ReadNames(ModuleFile& file, const ElfTable& table, const ElfSection& symbols)
{
    if (symbols.link >= table.sections.size())
    {
        return ElfDamage(file, "its symbol names are in a section that does not exist");
    }
    const ElfSection& section = table.sections[static_cast<std::size_t>(symbols.link)];
    if (section.type != TypeStrings)
    {
        return ElfDamage(file, "its symbol names are in a section of another type");
    }
    auto names = file.Read("table of symbol names", section.offset, section.size);
    if (names && !names->ends_with('\0'))
    {
        return ElfDamage(file, "the last of its symbol names is not ended");
    }
    return names;
}

Outcome<Symbols> ReadSymbols(ModuleFile& file, const ElfTable& table, const ElfSection& section)
{
    const Layout& layout = table.encoding.wide ? Layout64 : Layout32;
    auto entries = file.Read("table of dynamic symbols", section.offset, section.size);
    if (!entries)
    {
        return entries.GetError();
    }
    if (entries->size() % layout.size != 0)
    {
        return ElfDamage(file, "the entries of its table of dynamic symbols have a wrong size");
    }
    auto names = ReadNames(file, table, section);
    if (!names)
    {
        return names.GetError();
    }
    return Symbols{table.encoding, layout, *std::move(entries), *std::move(names)};
}

// Symbols may share a name, so a small file could announce more names than there is memory.
Outcome<std::vector<std::string>> GetNames(const ModuleFile& file, const Symbols& symbols)
{
    std::vector<std::string> names;
    std::uint64_t total = 0;
    for (std::size_t start = 0; start < symbols.entries.size(); start += symbols.layout.size)
    {
        const auto entry = std::string_view(symbols.entries).substr(start, symbols.layout.size);
        if (!IsShown(symbols, entry))
        {
            continue;
        }
        const auto place = symbols.encoding.Decode(entry, symbols.layout.name);
        if (place >= symbols.names.size())
        {
            return ElfDamage(file, "a symbol's name is outside the table of symbol names");
        }
        names.emplace_back(symbols.names.c_str() + static_cast<std::size_t>(place));
        total += names.back().size();
        if (total > ModuleFile::MaxRead)
        {
            return ElfDamage(file, "the names of its symbols are larger than 16 MiB");
        }
    }
    return names;
}

}  // namespace

Outcome<std::vector<std::string>> ReadElfSymbols(ModuleFile& file)
{
    const auto table = ReadElfTable(file, "table of dynamic symbols");
    if (!table)
    {
        return table.GetError();
    }
    const auto place = FindTable(file, *table);
    if (!place)
    {
        return place.GetError();
    }
    if (*place == table->sections.size())
    {
        return std::vector<std::string>();
    }
    const auto symbols = ReadSymbols(file, *table, table->sections[*place]);
    if (!symbols)
    {
        return symbols.GetError();
    }
    auto names = GetNames(file, *symbols);
    if (!names)
    {
        return names.GetError();
    }
    std::sort(names->begin(), names->end());
    names->erase(std::unique(names->begin(), names->end()), names->end());
    return names;
}

}  // namespace tvx::host
