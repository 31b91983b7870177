// SPDX-License-Identifier: MIT
#include "Host/DocumentText.h"

#include "Host/ModuleFormat.h"

namespace tvx::host
{

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
    const auto format = FindModuleFormat(file);
    if (!format)
    {
        return format.GetError();
    }
    return (*format)->readText(file, text);
}

Outcome<TextMapping> ReadTextMapping(ModuleFile& file, const EmbeddedText& text)
{
    const auto format = FindModuleFormat(file);
    if (!format)
    {
        return format.GetError();
    }
    return (*format)->readMapping(file, text);
}

}  // namespace tvx::host
