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

// A module format: the bytes that its files start with, and what reads the document out of them.
struct Format
{
    std::string_view magic;
    Outcome<std::string> (*readDocument)(ModuleFile& file);
};

constexpr Format Formats[] = {{ElfMagic, ReadElfDocument}};
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
            return format.readDocument(file);
        }
    }
    return file.Fail(ErrorKind::NotAModule, "is not a module: no ELF header");
}

}  // namespace tvx::host
