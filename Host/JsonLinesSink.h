// SPDX-License-Identifier: MIT
#pragma once

#include "Host/LogSink.h"

#include <filesystem>

namespace tvx::host
{

// A sink that adds each record to the file as one JSON object on a line of its own, in the form of FormatJsonLine. The file
// is made when it is missing; its folder is not.
// Fails: CannotRead when the file cannot be opened for writing.
Outcome<Ref<LogSink>> OpenJsonLinesSink(const std::filesystem::path& file);

}  // namespace tvx::host
