// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>

namespace tvx::Platform
{

// Whether any part of a file is in the memory of this process. Links to the file mean the file.
bool IsMapped(const std::filesystem::path& file);

// How many pieces of files are in the memory of this process: more after something than before it is something left behind.
std::size_t CountMappings();

}  // namespace tvx::Platform
