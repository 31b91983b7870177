// SPDX-License-Identifier: MIT
#include "Host/DocumentText.h"
#include "Host/ExportedSymbols.h"

#include "Tests/Support/ElfBuilder.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>

namespace tvx::host
{
namespace
{

using test::ElfBuilder;
using test::ElfClass;
using test::ElfOrder;
using test::HeaderField;
using test::ScratchFolder;
using test::SectionField;

using Names = std::vector<std::string>;

constexpr std::size_t SymbolsIndex = 1;
constexpr std::size_t NamesIndex = 2;
constexpr std::uint64_t Strings = 3;
constexpr std::uint64_t DynamicSymbols = 11;

constexpr unsigned Local = 0;
constexpr unsigned Global = 1;
constexpr unsigned Weak = 2;
constexpr unsigned Unique = 10;

constexpr std::uint64_t Undefined = 0;
constexpr std::uint64_t Absolute = 0xFFF1;

// A symbol as its fields stand in the file.
struct Symbol
{
    std::string name;
    unsigned binding = Global;
    unsigned visibility = 0;
    std::uint64_t section = 3;
};

// Every test runs for each of the four kinds of ELF files.
class ElfSymbols : public testing::TestWithParam<std::tuple<ElfClass, ElfOrder>>
{
protected:
    bool IsWide() const { return std::get<0>(GetParam()) == ElfClass::Bits64; }

    ElfBuilder Start() const { return ElfBuilder(std::get<0>(GetParam()), std::get<1>(GetParam())); }

    ElfBuilder Build(const std::vector<Symbol>& symbols) const
    {
        std::string names(1, '\0');
        std::string table(GetEntrySize(), '\0');
        for (const auto& symbol : symbols)
        {
            table += Encode(symbol, names.size());
            names.append(symbol.name).push_back('\0');
        }
        auto builder = Start();
        builder.Add(".dynsym", table, DynamicSymbols).Add(".dynstr", names, Strings).Add(".text", "code").Finish();
        builder.Set(SymbolsIndex, SectionField::Link, NamesIndex);
        return builder;
    }

    std::size_t GetEntrySize() const { return IsWide() ? 24 : 16; }

    static Outcome<Names> Read(std::string_view image)
    {
        auto file = ModuleFile::OfBytes("a.tvxlib", std::string(image));
        return ReadExportedSymbols(file);
    }

    Names ReadSymbols(const std::vector<Symbol>& symbols) const
    {
        const auto names = Read(Build(symbols).GetImage());
        return names ? *names : Names{names.GetError().message};
    }

    static void ExpectDamage(ElfBuilder& builder, const std::string& problem)
    {
        const auto names = Read(builder.GetImage());
        ASSERT_FALSE(names);
        EXPECT_EQ(names.GetError().kind, ErrorKind::DamagedModule);
        EXPECT_EQ(names.GetError().message, "a.tvxlib is a damaged module: " + problem);
    }

    // Whatever the file holds, the outcome is names or one line that names the file.
    static void ExpectSane(std::string_view image)
    {
        const auto names = Read(image);
        if (names)
            return;
        EXPECT_TRUE(names.GetError().message.starts_with("a.tvxlib "));
        EXPECT_EQ(names.GetError().message.find('\n'), std::string::npos);
    }

private:
    std::string Encode(const Symbol& symbol, std::uint64_t name) const
    {
        const auto info = symbol.binding << 4 | 2;
        std::string entry = EncodeNumber(name, 4);
        if (!IsWide())
            entry.append(8, '\0');
        entry += EncodeNumber(info, 1) + EncodeNumber(symbol.visibility, 1) + EncodeNumber(symbol.section, 2);
        entry.resize(GetEntrySize(), '\0');
        return entry;
    }

    std::string EncodeNumber(std::uint64_t value, std::size_t width) const
    {
        std::string bytes;
        for (std::size_t i = 0; i < width; ++i)
            bytes.push_back(static_cast<char>(value >> 8 * i & 0xFF));
        return std::get<1>(GetParam()) == ElfOrder::Little ? bytes : std::string(bytes.rbegin(), bytes.rend());
    }
};

TEST_P(ElfSymbols, AreSortedAndStandOnce)
{
    EXPECT_EQ(ReadSymbols({{"b"}, {"GetExport"}, {"a"}, {"b"}}), (Names{"GetExport", "a", "b"}));
}

TEST_P(ElfSymbols, AreGlobalWeakOrUniqueOnes)
{
    EXPECT_EQ(ReadSymbols({{"local", Local}, {"global", Global}, {"weak", Weak}, {"unique", Unique}, {"other", 3}}),
              (Names{"global", "unique", "weak"}));
}

TEST_P(ElfSymbols, AreThoseThatOthersMaySee)
{
    constexpr unsigned internal = 1, hidden = 2, protectedOne = 3;
    EXPECT_EQ(ReadSymbols({{"internal", Global, internal}, {"hidden", Global, hidden}}), Names{});
    EXPECT_EQ(ReadSymbols({{"protected", Global, protectedOne}}), Names{"protected"});
}

TEST_P(ElfSymbols, AreOfCodeAndDataInTheFile)
{
    EXPECT_EQ(ReadSymbols({{"asked for", Weak, 0, Undefined}, {"VERSION_1", Global, 0, Absolute}, {"own"}}),
              Names{"own"});
}

TEST_P(ElfSymbols, AreNoneInAFileThatHasNone)
{
    EXPECT_EQ(ReadSymbols({}), Names{});
    EXPECT_EQ(*Read(Start().Add(".text", "code").Finish().GetImage()), Names{});
    EXPECT_EQ(*Read(Start()
                        .Add(".dynsym", "", DynamicSymbols)
                        .Add("", std::string(1, '\0'), Strings)
                        .Finish()
                        .Set(SymbolsIndex, SectionField::Link, NamesIndex)
                        .GetImage()),
              Names{});
}

TEST_P(ElfSymbols, AreReadFromAFile)
{
    const ScratchFolder folder;
    EXPECT_EQ(*ReadExportedSymbols(folder.Write("a.tvxlib", Build({{"GetExport"}}).GetImage())), Names{"GetExport"});
}

TEST_P(ElfSymbols, NeedASectionTable)
{
    auto builder = Build({{"GetExport"}});
    builder.Set(HeaderField::TableOffset, 0);
    const auto names = Read(builder.GetImage());
    ASSERT_FALSE(names);
    EXPECT_EQ(names.GetError().kind, ErrorKind::NoDocument);
    EXPECT_EQ(names.GetError().message, "a.tvxlib has no table of dynamic symbols: it has no section table");
}

TEST_P(ElfSymbols, NeedOneTable)
{
    auto builder = Build({{"GetExport"}});
    ExpectDamage(builder.Set(3, SectionField::Type, DynamicSymbols), "it has more than one table of dynamic symbols");
}

TEST_P(ElfSymbols, NeedATableOfWholeEntriesInsideTheFile)
{
    auto builder = Build({{"GetExport"}});
    ExpectDamage(builder.Set(SymbolsIndex, SectionField::Size, GetEntrySize() + 1),
                 "the entries of its table of dynamic symbols have a wrong size");
    for (const auto field : {SectionField::Size, SectionField::Offset})
    {
        auto far = Build({{"GetExport"}});
        ExpectDamage(far.Set(SymbolsIndex, field, UINT64_MAX),
                     "its table of dynamic symbols reaches beyond the end of the file");
    }
}

TEST_P(ElfSymbols, NeedASectionOfNames)
{
    auto builder = Build({{"GetExport"}});
    for (const std::uint64_t link : {5u, 0xFFFFFFFFu})
        ExpectDamage(builder.Set(SymbolsIndex, SectionField::Link, link),
                     "its symbol names are in a section that does not exist");
    for (const std::uint64_t link : {0u, 1u, 3u})
        ExpectDamage(builder.Set(SymbolsIndex, SectionField::Link, link),
                     "its symbol names are in a section of another type");
}

TEST_P(ElfSymbols, NeedNamesThatEndInsideTheFile)
{
    auto builder = Build({{"GetExport"}});
    ExpectDamage(builder.Set(NamesIndex, SectionField::Size, 4), "the last of its symbol names is not ended");
    ExpectDamage(builder.Set(NamesIndex, SectionField::Size, 0), "the last of its symbol names is not ended");
    ExpectDamage(builder.Set(NamesIndex, SectionField::Size, UINT64_MAX),
                 "its table of symbol names reaches beyond the end of the file");
}

TEST_P(ElfSymbols, NeedNamesInsideTheirTable)
{
    auto builder = Build({{"a"}, {"b"}});
    // What ends with the first name leaves the second one outside.
    ExpectDamage(builder.Set(NamesIndex, SectionField::Size, 3),
                 "a symbol's name is outside the table of symbol names");
}

TEST_P(ElfSymbols, MayNotAnnounceMoreNamesThanThereIsMemory)
{
    const std::string longName(1024 * 1024, 'n');
    auto builder = Build({{longName}});
    std::string table;
    for (int i = 0; i < 17; ++i)
        table += builder.GetImage().substr(builder.GetHeaderSize() + GetEntrySize(), GetEntrySize());
    auto hostile = Start();
    hostile.Add(".dynsym", table, DynamicSymbols).Add(".dynstr", '\0' + longName + '\0', Strings).Finish();
    ExpectDamage(hostile.Set(SymbolsIndex, SectionField::Link, NamesIndex),
                 "the names of its symbols are larger than 16 MiB");
}

TEST_P(ElfSymbols, SurviveEveryLengthAndEveryChangedByte)
{
    auto builder = Build({{"GetExport"}, {"other", Weak}});
    std::string& image = builder.GetImage();
    for (std::size_t place = 0; place < image.size(); ++place)
    {
        ExpectSane(std::string_view(image).substr(0, place));
        const char before = image[place];
        for (const int change : {0x01, 0x80, 0xFF})
        {
            image[place] = static_cast<char>(before ^ change);
            ExpectSane(image);
        }
        image[place] = before;
    }
    EXPECT_EQ(*Read(image), (Names{"GetExport", "other"}));
}

TEST_P(ElfSymbols, SurviveRandomChanges)
{
    std::mt19937 random(20240301);
    const std::string image = Build({{"GetExport"}, {"other", Weak}}).GetImage();
    for (int round = 0; round < 10'000; ++round)
    {
        std::string changed = image;
        for (auto changes = random() % 8 + 1; changes > 0; --changes)
            changed[random() % changed.size()] = static_cast<char>(random());
        ExpectSane(changed);
    }
}

std::string NameKind(const testing::TestParamInfo<ElfSymbols::ParamType>& kind)
{
    const bool narrow = std::get<0>(kind.param) == ElfClass::Bits32;
    const bool little = std::get<1>(kind.param) == ElfOrder::Little;
    return std::string(narrow ? "Bits32" : "Bits64") + (little ? "Little" : "Big");
}

INSTANTIATE_TEST_SUITE_P(EveryElf, ElfSymbols,
                         testing::Combine(testing::Values(ElfClass::Bits32, ElfClass::Bits64),
                                          testing::Values(ElfOrder::Little, ElfOrder::Big)),
                         NameKind);

TEST(ExportedSymbols, OfAModuleAreItsOneFunction)
{
    const auto names = ReadExportedSymbols(TVX_MODULE_FOLDER "/TVXGenericPlugins.tvxlib");
    ASSERT_TRUE(names) << names.GetError().message;
    EXPECT_EQ(*names, Names{"GetExport"});
}

TEST(ExportedSymbols, OfAnotherFileAreRefused)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.tvxlib", "MZ\x90");
    const auto names = ReadExportedSymbols(path);
    ASSERT_FALSE(names);
    EXPECT_EQ(names.GetError().kind, ErrorKind::NotAModule);
    EXPECT_EQ(names.GetError().message, DisplayName(path) + " is not a module: no ELF header");
}

TEST(ExportedSymbols, OfAMissingFileAreRefused)
{
    const ScratchFolder folder;
    const auto names = ReadExportedSymbols(folder.GetPath() / "missing.tvxlib");
    ASSERT_FALSE(names);
    EXPECT_EQ(names.GetError().kind, ErrorKind::CannotRead);
}

TEST(TextMappingOfAModule, IsReadOnlyMemory)
{
    auto file = ModuleFile::Open(TVX_MODULE_FOLDER "/TVXGenericPlugins.tvxlib");
    ASSERT_TRUE(file);
    const auto mapping = ReadTextMapping(*file, DocumentText);
    ASSERT_TRUE(mapping) << mapping.GetError().message;
    EXPECT_TRUE(mapping->mapped);
    EXPECT_FALSE(mapping->writable);
    EXPECT_FALSE(mapping->executable);
}

TEST(TextMappingOfAModule, IsWhatTheSectionSays)
{
    constexpr std::uint64_t writable = 1, mapped = 2, executable = 4;
    for (const std::uint64_t flags : {std::uint64_t{0}, mapped, mapped | writable, mapped | executable})
    {
        ElfBuilder builder(ElfClass::Bits64, ElfOrder::Little);
        builder.Add(".plugcfg", "text").Finish().Set(1, SectionField::Flags, flags);
        auto file = ModuleFile::OfBytes("a.tvxlib", builder.GetImage());
        const auto mapping = ReadTextMapping(file, DocumentText);
        ASSERT_TRUE(mapping) << mapping.GetError().message;
        EXPECT_EQ(mapping->mapped, (flags & mapped) != 0) << flags;
        EXPECT_EQ(mapping->writable, (flags & writable) != 0) << flags;
        EXPECT_EQ(mapping->executable, (flags & executable) != 0) << flags;
    }
}

}  // namespace
}  // namespace tvx::host
