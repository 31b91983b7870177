// SPDX-License-Identifier: MIT
#include "Host/DocumentText.h"

#include "Host/ElfDocument.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace tvx::host
{
namespace
{

// A module format: the bytes that its files start with, and what reads texts out of them.
struct Format
{
    std::string_view magic;
    Outcome<std::string> (*readText)(ModuleFile& file, const EmbeddedText& text);
};

constexpr Format Formats[] = {{ElfMagic, ReadElfText}};
constexpr std::uint64_t LongestMagic = 4;

}  // namespace

Outcome<std::string> ReadDocumentText(const std::filesystem::path& path)
{
    auto file = ModuleFile::Open(path);
    if (!file)
    {
        return file.GetError();
    }
    return ReadDocumentText(*file);
}

Outcome<std::string> ReadDocumentText(ModuleFile& file)
{
    return ReadEmbeddedText(file, DocumentText);
}

Outcome<std::string> ReadEmbeddedText(ModuleFile& file, const EmbeddedText& text)
{
    if (file.GetSize() == 0)
    {
        return file.Fail(ErrorKind::NotAModule, "is not a module: the file is empty");
    }
    const auto start = file.Read("start", 0, std::min(file.GetSize(), LongestMagic));
    if (!start)
    {
        return start.GetError();
    }
    for (const Format& format : Formats)
    {
        if (start->starts_with(format.magic))
        {
            return format.readText(file, text);
        }
    }
    return file.Fail(ErrorKind::NotAModule, "is not a module: no ELF header");
}

}  // namespace tvx::host
