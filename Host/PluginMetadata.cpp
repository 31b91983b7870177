// SPDX-License-Identifier: MIT
#include "Host/PluginMetadata.h"

#include <utility>

namespace tvx::host
{

void WriteMetadata(ISimpleMap& map, const Export& entry, const BuildInformation& build)
{
    const std::pair<const char*, const std::string&> texts[] = {
        {"id", entry.id},
        {"name", entry.metadata.name},
        {"subname", entry.metadata.subname},
        {"copyright", entry.metadata.copyright},
        {"version", build.version},
        {"comment", build.comment},
    };
    for (const auto& [key, text] : texts)
    {
        if (!text.empty())
            map.SetString(key, text.c_str());
    }
}

}  // namespace tvx::host
