// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

namespace tvx::Platform
{

// Opens a file as text for writing only: made when it is missing, emptied when it is there, open to other processes to read
// and write meanwhile, and not passed on to programs that this one starts. Null when the system refuses.
std::FILE* OpenSharedForWriting(const char* path) noexcept;

}  // namespace tvx::Platform
