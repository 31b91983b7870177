// SPDX-License-Identifier: MIT
#include "Platform/SharedFile.h"

namespace tvx::Platform
{

// An open file here keeps nobody else out.
std::FILE* OpenSharedForWriting(const char* path) noexcept
{
    return std::fopen(path, "we");
}

}  // namespace tvx::Platform
