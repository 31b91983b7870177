// SPDX-License-Identifier: MIT
#include "Host/DocumentText.h"

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

constexpr std::string_view Document = "<plugcfg version=\"1\">\r\n</plugcfg>\r\n";
constexpr std::size_t DocumentIndex = 2;

// Every test runs for each of the four kinds of ELF files.
class DocumentText : public testing::TestWithParam<std::tuple<ElfClass, ElfOrder>>
{
protected:
    ElfBuilder Start() const { return ElfBuilder(std::get<0>(GetParam()), std::get<1>(GetParam())); }

    ElfBuilder Build() const
    {
        auto builder = Start();
        builder.Add(".text", "code").Add(".plugcfg", Document).Add(".data", "data").Finish();
        return builder;
    }

    static Outcome<std::string> Read(std::string_view image)
    {
        auto file = ModuleFile::OfBytes("a.tvxlib", std::string(image));
        return ReadDocumentText(file);
    }

    static void ExpectFailure(std::string_view image, ErrorKind kind, const std::string& problem)
    {
        const auto text = Read(image);
        ASSERT_FALSE(text);
        EXPECT_EQ(text.GetError().kind, kind);
        EXPECT_EQ(text.GetError().message, "a.tvxlib " + problem);
    }

    static void ExpectDamage(ElfBuilder& builder, const std::string& problem)
    {
        ExpectFailure(builder.GetImage(), ErrorKind::DamagedModule, "is a damaged module: " + problem);
    }

    // Whatever the file holds, the outcome is a text no longer than the file, or one line that names the file.
    static void ExpectSane(std::string_view image)
    {
        const auto text = Read(image);
        if (text)
        {
            EXPECT_LE(text->size(), image.size());
            return;
        }
        EXPECT_TRUE(text.GetError().message.starts_with("a.tvxlib "));
        EXPECT_EQ(text.GetError().message.find('\n'), std::string::npos);
    }
};

TEST_P(DocumentText, IsTheExactContentOfTheSection)
{
    const auto text = Read(Build().GetImage());
    ASSERT_TRUE(text) << text.GetError().message;
    EXPECT_EQ(*text, Document);
}

TEST_P(DocumentText, IsReadFromAFile)
{
    const ScratchFolder folder;
    EXPECT_EQ(*ReadDocumentText(folder.Write("a.tvxlib", Build().GetImage())), Document);
}

TEST_P(DocumentText, MayHoldAnyBytesOrNone)
{
    const std::string bytes("\0\xFF\r\n\0", 5);
    EXPECT_EQ(*Read(Start().Add(".plugcfg", bytes).Finish().GetImage()), bytes);
    EXPECT_EQ(*Read(Start().Add(".plugcfg", "").Finish().GetImage()), "");
}

TEST_P(DocumentText, IsFoundByItsWholeName)
{
    auto builder = Start();
    builder.Add(".plugcfg2", "a").Add("plugcfg", "b").Add(".plugcf", "c").Add(".plugcfg", "d").Finish();
    EXPECT_EQ(*Read(builder.GetImage()), "d");
}

TEST_P(DocumentText, IsFoundWhenTheCountOfSectionsStandsInTheFirstOne)
{
    auto builder = Build();
    builder.Set(HeaderField::SectionCount, 0).Set(0, SectionField::Size, builder.GetNameIndex() + 1);
    EXPECT_EQ(*Read(builder.GetImage()), Document);
}

TEST_P(DocumentText, IsFoundWhenTheIndexOfTheNamesStandsInTheFirstSection)
{
    auto builder = Build();
    builder.Set(HeaderField::NameIndex, 0xFFFF).Set(0, SectionField::Link, builder.GetNameIndex());
    EXPECT_EQ(*Read(builder.GetImage()), Document);
}

TEST_P(DocumentText, IsNotLookedForInUnusedSections)
{
    auto builder = Build();
    builder.Set(1, SectionField::Type, 0).Set(1, SectionField::Name, 0xFFFFFFFF);
    EXPECT_EQ(*Read(builder.GetImage()), Document);
    builder.Set(DocumentIndex, SectionField::Type, 0);
    ExpectFailure(builder.GetImage(), ErrorKind::NoDocument, "has no configuration document");
}

TEST_P(DocumentText, IsMissedInAModuleWithoutOne)
{
    auto builder = Start();
    ExpectFailure(builder.Add(".text", "code").Finish().GetImage(), ErrorKind::NoDocument,
                  "has no configuration document");
}

TEST_P(DocumentText, IsMissedInAModuleWithoutSectionTable)
{
    auto builder = Build();
    builder.Set(HeaderField::TableOffset, 0).Set(HeaderField::SectionCount, 0).Set(HeaderField::EntrySize, 0);
    ExpectFailure(builder.GetImage(), ErrorKind::NoDocument, "has no configuration document: it has no section table");
}

TEST_P(DocumentText, NeedsAKnownClassAndByteOrder)
{
    for (const char value : {'\0', '\3', '\xFF'})
    {
        auto builder = Build();
        builder.GetImage()[5] = value;
        ExpectDamage(builder, "its ELF byte order is neither little nor big endian");
        builder.GetImage()[4] = value;
        ExpectDamage(builder, "its ELF class is neither 32 nor 64 bit");
    }
}

TEST_P(DocumentText, NeedsAWholeHeader)
{
    auto builder = Build();
    const std::string image = builder.GetImage();
    for (const std::size_t size : {std::size_t{4}, std::size_t{15}, builder.GetHeaderSize() - 1})
    {
        builder.GetImage() = image.substr(0, size);
        ExpectDamage(builder, "its ELF header reaches beyond the end of the file");
    }
}

TEST_P(DocumentText, NeedsEntriesOfTheRightSize)
{
    for (const std::uint64_t size : {0U, 1U, 39U, 41U, 63U, 65U, 0xFFFFU})
    {
        auto builder = Build();
        ExpectDamage(builder.Set(HeaderField::EntrySize, size), "the entries of its section table have a wrong size");
    }
}

TEST_P(DocumentText, NeedsASectionTableInsideTheFile)
{
    constexpr auto problem = "its section table reaches beyond the end of the file";
    const auto offset = Build().GetTableOffset();
    for (const std::uint64_t wrong :
         {std::uint64_t{offset + 1}, std::uint64_t{0xFFFFFFFF}, UINT64_MAX, UINT64_MAX - 63})
    {
        auto builder = Build();
        ExpectDamage(builder.Set(HeaderField::TableOffset, wrong), problem);
    }
    for (const std::uint64_t count : {6U, 0xFEFFU})
    {
        auto builder = Build();
        ExpectDamage(builder.Set(HeaderField::SectionCount, count), problem);
    }
}

TEST_P(DocumentText, NeedsASaneCountOfSectionsInTheFirstOne)
{
    for (const std::uint64_t count : {std::uint64_t{6}, std::uint64_t{0xFFFFFFFF}, UINT64_MAX})
    {
        auto builder = Build();
        builder.Set(HeaderField::SectionCount, 0).Set(0, SectionField::Size, count);
        ExpectDamage(builder, "its section table reaches beyond the end of the file");
    }
}

TEST_P(DocumentText, NeedsASectionTableOfASaneSize)
{
    auto builder = Build();
    const auto count = ModuleFile::MaxRead / builder.GetEntrySize() + 1;
    builder.Set(HeaderField::SectionCount, 0).Set(0, SectionField::Size, count);
    const ScratchFolder folder;
    const auto path = folder.Write("a.tvxlib", builder.GetImage());
    std::filesystem::resize_file(path, 2 * ModuleFile::MaxRead);
    const auto text = ReadDocumentText(path);
    ASSERT_FALSE(text);
    EXPECT_EQ(text.GetError().message,
              DisplayName(path) + " is a damaged module: its section table is larger than 16 MiB");
}

TEST_P(DocumentText, NeedsASectionOfNames)
{
    for (const std::uint64_t index : {5U, 0xFF00U, 0xFFFEU})
    {
        auto builder = Build();
        ExpectDamage(builder.Set(HeaderField::NameIndex, index),
                     "its section names are in a section that does not exist");
    }
    auto empty = Build();
    empty.Set(HeaderField::SectionCount, 0);
    ExpectDamage(empty, "its section names are in a section that does not exist");
    for (const std::uint64_t index : {0U, 1U})
    {
        auto builder = Build();
        ExpectDamage(builder.Set(HeaderField::NameIndex, index), "its section names are in a section of another type");
    }
}

TEST_P(DocumentText, NeedsNamesInsideTheFile)
{
    for (const auto field : {SectionField::Offset, SectionField::Size})
    {
        auto builder = Build();
        builder.Set(builder.GetNameIndex(), field, UINT64_MAX);
        ExpectDamage(builder, "its table of section names reaches beyond the end of the file");
    }
}

TEST_P(DocumentText, NeedsNamesThatEnd)
{
    auto builder = Build();
    builder.GetImage()[builder.GetTableOffset() - 1] = 'x';
    ExpectDamage(builder, "the last of its section names is not ended");
    ExpectDamage(builder.Set(builder.GetNameIndex(), SectionField::Size, 0),
                 "the last of its section names is not ended");
}

TEST_P(DocumentText, NeedsNamesInsideTheirTable)
{
    for (const std::uint64_t name : {0xFFFFFFFFU, 0x80000000U, 40U})
    {
        auto builder = Build();
        ExpectDamage(builder.Set(1, SectionField::Name, name),
                     "a section's name is outside the table of section names");
    }
}

TEST_P(DocumentText, IsRefusedWhenItStandsTwice)
{
    auto builder = Start();
    ExpectDamage(builder.Add(".plugcfg", "a").Add(".plugcfg", "b").Finish(), "it has more than one section .plugcfg");
}

TEST_P(DocumentText, IsRefusedWithoutBytesInTheFile)
{
    auto builder = Build();
    ExpectDamage(builder.Set(DocumentIndex, SectionField::Type, 8),
                 "its configuration document has no bytes in the file");
}

TEST_P(DocumentText, IsRefusedWhenCompressed)
{
    auto builder = Build();
    ExpectDamage(builder.Set(DocumentIndex, SectionField::Flags, 0x802), "its configuration document is compressed");
}

TEST_P(DocumentText, IsRefusedOutsideOfTheFile)
{
    for (const auto field : {SectionField::Offset, SectionField::Size})
    {
        for (const std::uint64_t value : {std::uint64_t{0xFFFF}, std::uint64_t{0xFFFFFFFF}, UINT64_MAX - 9})
        {
            auto builder = Build();
            ExpectDamage(builder.Set(DocumentIndex, field, value),
                         "its configuration document reaches beyond the end of the file");
        }
    }
}

TEST_P(DocumentText, IsRefusedWhenHuge)
{
    auto builder = Build();
    builder.Set(DocumentIndex, SectionField::Size, ModuleFile::MaxRead + 1);
    const ScratchFolder folder;
    const auto path = folder.Write("a.tvxlib", builder.GetImage());
    std::filesystem::resize_file(path, 2 * ModuleFile::MaxRead);
    const auto text = ReadDocumentText(path);
    ASSERT_FALSE(text);
    EXPECT_EQ(text.GetError().kind, ErrorKind::DamagedModule);
    EXPECT_EQ(text.GetError().message,
              DisplayName(path) + " is a damaged module: its configuration document is larger than 16 MiB");
}

TEST_P(DocumentText, IsNeverReadFromATruncatedFile)
{
    // The table is at the end, so every byte of the file is needed.
    auto builder = Build();
    const std::string& image = builder.GetImage();
    for (std::size_t size = 0; size < image.size(); ++size)
    {
        const auto text = Read(std::string_view(image).substr(0, size));
        ASSERT_FALSE(text) << size;
        EXPECT_EQ(text.GetError().kind, size < 4 ? ErrorKind::NotAModule : ErrorKind::DamagedModule) << size;
    }
}

TEST_P(DocumentText, SurvivesEveryChangedByte)
{
    auto builder = Build();
    std::string& image = builder.GetImage();
    for (std::size_t place = 0; place < image.size(); ++place)
    {
        const char before = image[place];
        for (const int change : {0x01, 0x80, 0xFF})
        {
            image[place] = static_cast<char>(before ^ change);
            ExpectSane(image);
        }
        image[place] = before;
    }
    EXPECT_EQ(*Read(image), Document);
}

TEST_P(DocumentText, SurvivesRandomChanges)
{
    std::mt19937 random(20240229);
    auto builder = Build();
    const std::string& image = builder.GetImage();
    for (int round = 0; round < 20'000; ++round)
    {
        std::string changed = image;
        for (auto changes = random() % 8 + 1; changes > 0; --changes)
        {
            changed[random() % changed.size()] = static_cast<char>(random());
        }
        ExpectSane(changed);
    }
}

std::string NameKind(const testing::TestParamInfo<DocumentText::ParamType>& kind)
{
    const bool narrow = std::get<0>(kind.param) == ElfClass::Bits32;
    const bool little = std::get<1>(kind.param) == ElfOrder::Little;
    return std::string(narrow ? "Bits32" : "Bits64") + (little ? "Little" : "Big");
}

INSTANTIATE_TEST_SUITE_P(EveryElf, DocumentText,
                         testing::Combine(testing::Values(ElfClass::Bits32, ElfClass::Bits64),
                                          testing::Values(ElfOrder::Little, ElfOrder::Big)),
                         NameKind);

// In bytes this count of sections is the right one again, once it has wrapped around at 64 bit.
TEST(DocumentTextOfAHostileFile, IsRefusedWhenTheSizeOfTheSectionTableWrapsAround)
{
    ElfBuilder builder(ElfClass::Bits64, ElfOrder::Little);
    builder.Add(".plugcfg", Document).Finish();
    const std::uint64_t count = builder.GetNameIndex() + 1;
    builder.Set(HeaderField::SectionCount, 0).Set(0, SectionField::Size, (std::uint64_t{1} << 58) + count);
    auto file = ModuleFile::OfBytes("a.tvxlib", builder.GetImage());
    const auto text = ReadDocumentText(file);
    ASSERT_FALSE(text);
    EXPECT_EQ(text.GetError().message,
              "a.tvxlib is a damaged module: its section table reaches beyond the end of the file");
}

TEST(DocumentTextOfAnotherFile, IsRefused)
{
    const ScratchFolder folder;
    const std::pair<std::string_view, std::string> cases[] = {
        {"", "the file is empty"},
        {"\177", "no ELF header"},
        {"\177EL", "no ELF header"},
        {"plain text, longer than any header that a module of whatever format might have", "no ELF header"},
        {"MZ\x90", "no ELF header"},
    };
    for (const auto& [content, problem] : cases)
    {
        const auto path = folder.Write("a.tvxlib", content);
        const auto text = ReadDocumentText(path);
        ASSERT_FALSE(text);
        EXPECT_EQ(text.GetError().kind, ErrorKind::NotAModule);
        EXPECT_EQ(text.GetError().message, DisplayName(path) + " is not a module: " + problem);
    }
}

TEST(DocumentTextOfAnotherFile, IsRefusedWhenTheFileCannotBeRead)
{
    const ScratchFolder folder;
    const auto text = ReadDocumentText(folder.GetPath());
    ASSERT_FALSE(text);
    EXPECT_EQ(text.GetError().kind, ErrorKind::CannotRead);
    EXPECT_EQ(text.GetError().message, DisplayName(folder.GetPath()) + " is a folder, not a file");
}

}  // namespace
}  // namespace tvx::host
