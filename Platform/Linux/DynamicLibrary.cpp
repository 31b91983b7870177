// SPDX-License-Identifier: MIT
#include "Platform/DynamicLibrary.h"

#include <utility>

#include <dlfcn.h>

namespace tvx::Platform
{

DynamicLibrary::~DynamicLibrary()
{
    if (handle_ != nullptr)
        dlclose(handle_);
}

DynamicLibrary::DynamicLibrary(DynamicLibrary&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

DynamicLibrary& DynamicLibrary::operator=(DynamicLibrary&& other) noexcept
{
    std::swap(handle_, other.handle_);
    return *this;
}

DynamicLibrary DynamicLibrary::Load(const std::string& file, std::string& reason)
{
    DynamicLibrary library;
    // A bare file name would be looked for on the system's library path, not in the current folder.
    const auto path = file.find('/') == std::string::npos ? "./" + file : file;
    library.handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library.handle_ == nullptr)
        reason = dlerror();
    return library;
}

void* DynamicLibrary::FindSymbol(const char* name) const noexcept
{
    return dlsym(handle_, name);
}

}  // namespace tvx::Platform
