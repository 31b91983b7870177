// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace tvx::Platform
{

// A module file mapped into the process; destroying it unmaps the file again. Loading runs the file's own start code.
class DynamicLibrary
{
public:
    DynamicLibrary() noexcept = default;
    ~DynamicLibrary();
    DynamicLibrary(DynamicLibrary&& other) noexcept;
    DynamicLibrary& operator=(DynamicLibrary&& other) noexcept;

    // Maps the file with all it needs, its symbols kept to itself. On failure gives an empty library and the system's reason.
    static DynamicLibrary Load(const std::string& file, std::string& reason);

    // The address of an exported function, or null.
    void* FindSymbol(const char* name) const noexcept;

    // Whether a file is mapped.
    explicit operator bool() const noexcept { return handle_ != nullptr; }

private:
    void* handle_ = nullptr;
};

}  // namespace tvx::Platform
