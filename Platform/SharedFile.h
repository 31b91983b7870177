// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

namespace tvx::Platform
{

// Opens a file as text for writing only: made when it is missing, emptied when it is there, open to other processes to read
// and write meanwhile, and not passed on to programs that this one starts. It has no buffer: what is written goes to the
// system at once. Null when the system refuses.
std::FILE* OpenSharedForWriting(const char* path) noexcept;

// As long as it lives, other threads wait before they write to the file. The child of a fork finds no file taken by a thread
// that it does not have.
class FileLock
{
public:
    // Waits until no other thread writes to the file.
    explicit FileLock(std::FILE* file) noexcept;
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    std::FILE* file_;
};

}  // namespace tvx::Platform
