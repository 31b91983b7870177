// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleFile.h"

#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

namespace tvx::tool
{

// That no folder can be made. A type of its own: what a module throws must not be taken for it.
class NoTemporaryFolder : public std::runtime_error
{
public:
    NoTemporaryFolder(const std::string& parent, const std::error_code& reason)
        : std::runtime_error("no folder can be made in " + parent + ": " + reason.message())
    {
    }
};

// A new folder, gone with all its content when this goes.
class TemporaryFolder
{
public:
    // Among the system's temporary files. Both throw NoTemporaryFolder.
    TemporaryFolder() : TemporaryFolder(FindParent()) {}

    explicit TemporaryFolder(const std::filesystem::path& parent)
    {
        std::random_device random;
        std::error_code failed;
        do
            path_ = parent / ("tvx-" + std::to_string(random()));
        while (!std::filesystem::create_directory(path_, failed) && !failed);
        if (failed)
            throw NoTemporaryFolder(host::DisplayName(parent), failed);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& GetPath() const { return path_; }

private:
    static std::filesystem::path FindParent()
    {
        std::error_code failed;
        auto parent = std::filesystem::temp_directory_path(failed);
        if (failed)
            throw NoTemporaryFolder("the folder for temporary files", failed);
        return parent;
    }

    std::filesystem::path path_;
};

}  // namespace tvx::tool
