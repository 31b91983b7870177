// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tvx::host
{

// The whole content of a file, at most 64 MiB; a pipe will do.
// Fails: CannotRead.
Outcome<std::string> ReadTextFile(const std::filesystem::path& file);

// Replaces the content of a file, or makes it. The file is replaced as a whole and never seen half written; a link's target is
// replaced, not the link. Gives the number of bytes.
// Fails: CannotRead; the file is as it was then.
Outcome<std::size_t> WriteTextFile(const std::filesystem::path& file, std::string_view text);

}  // namespace tvx::host
