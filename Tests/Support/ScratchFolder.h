// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

namespace tvx::test
{

// A folder of one test alone, gone with all its content when the test is over.
class ScratchFolder
{
public:
    ScratchFolder()
    {
        std::random_device random;
        const std::filesystem::path parent = testing::TempDir();
        do
        {
            path_ = parent / ("tvx-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }

    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& GetPath() const { return path_; }

    // Makes or replaces a file.
    std::filesystem::path Write(const std::string& name, std::string_view content) const
    {
        const auto file = path_ / name;
        std::ofstream stream(file, std::ios::binary);
        stream.write(content.data(), static_cast<std::streamsize>(content.size()));
        return file;
    }

private:
    std::filesystem::path path_;
};

}  // namespace tvx::test
