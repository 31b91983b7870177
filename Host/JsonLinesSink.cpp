// SPDX-License-Identifier: MIT
#include "Host/JsonLinesSink.h"

#include "Host/AppendingFile.h"

namespace tvx::host
{

Outcome<Ref<LogSink>> OpenJsonLinesSink(const std::filesystem::path& file)
{
    const auto open = [](const std::filesystem::path& path) { return std::make_unique<AppendingFile>(path); };
    return OpenLogSink(file, FormatJsonLine, open);
}

}  // namespace tvx::host
