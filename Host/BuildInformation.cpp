// SPDX-License-Identifier: MIT
#include "Host/BuildInformation.h"

#include "Host/DocumentText.h"

#include <algorithm>

namespace tvx::host
{

Outcome<BuildInformation> ReadBuildInformation(const std::filesystem::path& file)
{
    auto opened = ModuleFile::Open(file);
    if (!opened)
        return opened.GetError();
    const auto text = ReadEmbeddedText(*opened, BuildText);
    if (!text && text.GetError().kind == ErrorKind::NoDocument)
        return BuildInformation();
    if (!text)
        return text.GetError();
    const auto lineEnd = std::min(text->find('\n'), text->size());
    return BuildInformation{text->substr(0, lineEnd), text->substr(std::min(lineEnd + 1, text->size()))};
}

}  // namespace tvx::host
