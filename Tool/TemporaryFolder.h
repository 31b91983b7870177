// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace tvx::tool
{

// A new folder, gone with all its content when this goes.
class TemporaryFolder
{
public:
    // Among the system's temporary files. Both throw std::filesystem::filesystem_error when there cannot be one.
    TemporaryFolder() : TemporaryFolder(std::filesystem::temp_directory_path()) {}

    explicit TemporaryFolder(const std::filesystem::path& parent)
    {
        std::random_device random;
        do
            path_ = parent / ("tvx-" + std::to_string(random()));
        while (!std::filesystem::create_directory(path_));
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
    std::filesystem::path path_;
};

}  // namespace tvx::tool
