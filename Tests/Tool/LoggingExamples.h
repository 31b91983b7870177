// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace tvx::test
{

// The example configuration of the logger with this extension.
inline std::string GetLoggingExample(const std::string& extension)
{
    return std::filesystem::path(TVX_SETTINGS_FILE).replace_filename("logging" + extension).string();
}

}  // namespace tvx::test
