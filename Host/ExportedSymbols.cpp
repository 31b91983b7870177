// SPDX-License-Identifier: MIT
#include "Host/ExportedSymbols.h"

#include "Host/ModuleFormat.h"

namespace tvx::host
{

Outcome<std::vector<std::string>> ReadExportedSymbols(const std::filesystem::path& path)
{
    auto file = ModuleFile::Open(path);
    if (!file)
    {
        return file.GetError();
    }
    return ReadExportedSymbols(*file);
}

Outcome<std::vector<std::string>> ReadExportedSymbols(ModuleFile& file)
{
    const auto format = FindModuleFormat(file);
    if (!format)
    {
        return format.GetError();
    }
    return (*format)->readSymbols(file);
}

}  // namespace tvx::host
