// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::test
{

enum class ElfClass
{
    Bits32,
    Bits64,
};

enum class ElfOrder
{
    Little,
    Big,
};

enum class HeaderField
{
    TableOffset,
    EntrySize,
    SectionCount,
    NameIndex,
};

enum class SectionField
{
    Name,
    Type,
    Flags,
    Offset,
    Size,
    Link,
};

// Builds small ELF files in memory, and spoils them: header, contents of the sections, names, table of sections.
//
// Section 0 is the unused one that every file has, the added ones follow, the section of names is the last.
class ElfBuilder
{
public:
    ElfBuilder(ElfClass width, ElfOrder order)
        : wide_(width == ElfClass::Bits64),
          bigEndian_(order == ElfOrder::Big),
          image_(GetHeaderSize(), '\0')
    {
        image_.replace(0, 7, {'\177', 'E', 'L', 'F', wide_ ? '\2' : '\1', bigEndian_ ? '\2' : '\1', '\1'});
        Put(16, 2, 3);
    }

    ElfBuilder& Add(std::string_view name, std::string_view content, std::uint64_t type = 1)
    {
        sections_.push_back({names_.size(), type, image_.size(), content.size()});
        names_.append(name).push_back('\0');
        image_ += content;
        return *this;
    }

    // Writes names and table; only then the fields below can be set.
    ElfBuilder& Finish()
    {
        Add(".shstrtab", "", 3);
        sections_.back().size = names_.size();
        image_ += names_;
        tableOffset_ = image_.size();
        image_.resize(tableOffset_ + GetEntrySize() * (sections_.size() + 1), '\0');
        Set(HeaderField::TableOffset, tableOffset_);
        Set(HeaderField::EntrySize, GetEntrySize());
        Set(HeaderField::SectionCount, sections_.size() + 1);
        Set(HeaderField::NameIndex, GetNameIndex());
        for (std::size_t i = 0; i < sections_.size(); ++i)
        {
            Set(i + 1, SectionField::Name, sections_[i].name);
            Set(i + 1, SectionField::Type, sections_[i].type);
            Set(i + 1, SectionField::Offset, sections_[i].offset);
            Set(i + 1, SectionField::Size, sections_[i].size);
        }
        return *this;
    }

    ElfBuilder& Set(HeaderField field, std::uint64_t value)
    {
        static constexpr Place narrow[] = {{32, 4}, {46, 2}, {48, 2}, {50, 2}};
        static constexpr Place wide[] = {{40, 8}, {58, 2}, {60, 2}, {62, 2}};
        const Place place = (wide_ ? wide : narrow)[static_cast<std::size_t>(field)];
        return Put(place.offset, place.width, value);
    }

    ElfBuilder& Set(std::size_t section, SectionField field, std::uint64_t value)
    {
        static constexpr Place narrow[] = {{0, 4}, {4, 4}, {8, 4}, {16, 4}, {20, 4}, {24, 4}};
        static constexpr Place wide[] = {{0, 4}, {4, 4}, {8, 8}, {24, 8}, {32, 8}, {40, 4}};
        const Place place = (wide_ ? wide : narrow)[static_cast<std::size_t>(field)];
        return Put(tableOffset_ + section * GetEntrySize() + place.offset, place.width, value);
    }

    std::string& GetImage() { return image_; }

    std::size_t GetHeaderSize() const { return wide_ ? 64 : 52; }

    std::size_t GetEntrySize() const { return wide_ ? 64 : 40; }

    std::size_t GetTableOffset() const { return tableOffset_; }

    std::size_t GetNameIndex() const { return sections_.size(); }

private:
    struct Place
    {
        std::size_t offset;
        std::size_t width;
    };

    struct Section
    {
        std::size_t name;
        std::uint64_t type;
        std::size_t offset;
        std::size_t size;
    };

    ElfBuilder& Put(std::size_t offset, std::size_t width, std::uint64_t value)
    {
        for (std::size_t i = 0; i < width; ++i)
        {
            image_[offset + (bigEndian_ ? width - 1 - i : i)] = static_cast<char>(value & 0xFF);
            value >>= 8;
        }
        return *this;
    }

    bool wide_;
    bool bigEndian_;
    std::string image_;
    std::string names_{'\0'};
    std::vector<Section> sections_;
    std::size_t tableOffset_ = 0;
};

}  // namespace tvx::test
