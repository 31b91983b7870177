// SPDX-License-Identifier: MIT
#include "Host/ModuleFormat.h"

#include "Host/ElfDocument.h"
#include "Host/ElfSymbols.h"

#include <algorithm>
#include <cstdint>

namespace tvx::host
{
namespace
{

constexpr ModuleFormat Formats[] = {{"\177ELF", ReadElfText, ReadElfTextMapping, ReadElfSymbols}};
constexpr std::uint64_t LongestMagic = 4;

}  // namespace

Outcome<const ModuleFormat*> FindModuleFormat(ModuleFile& file)
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
    for (const ModuleFormat& format : Formats)
    {
        if (start->starts_with(format.magic))
        {
            return &format;
        }
    }
    return file.Fail(ErrorKind::NotAModule, "is not a module: no ELF header");
}

}  // namespace tvx::host
