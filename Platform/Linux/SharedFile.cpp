// SPDX-License-Identifier: MIT
#include "Platform/SharedFile.h"

namespace tvx::Platform
{

// An open file here keeps nobody else out.
std::FILE* OpenSharedForWriting(const char* path) noexcept
{
    std::FILE* const file = std::fopen(path, "we");
    if (file != nullptr)
        std::setvbuf(file, nullptr, _IONBF, 0);
    return file;
}

FileLock::FileLock(std::FILE* file) noexcept : file_(file)
{
    flockfile(file_);
}

FileLock::~FileLock()
{
    funlockfile(file_);
}

}  // namespace tvx::Platform
