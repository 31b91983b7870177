// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/Environment.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

namespace tvx::check
{

// An empty folder that is the current one as long as it lives, and is gone with all its content afterwards.
class LogFolder
{
public:
    LogFolder() : before_(std::filesystem::current_path())
    {
        std::random_device random;
        const auto parent = std::filesystem::temp_directory_path();
        do
        {
            path_ = parent / ("tvx-check-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
        std::filesystem::current_path(path_);
    }

    ~LogFolder()
    {
        std::error_code ignored;
        std::filesystem::current_path(before_, ignored);
        std::filesystem::remove_all(path_, ignored);
    }

    LogFolder(const LogFolder&) = delete;
    LogFolder& operator=(const LogFolder&) = delete;

    bool IsEmpty() const { return std::filesystem::is_empty(path_); }
    bool Has(const std::string& name) const { return std::filesystem::exists(path_ / name); }

    // Empty for a file that is not there.
    std::string Read(const std::string& name) const
    {
        std::ifstream stream(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    std::size_t CountLines(const std::string& name) const
    {
        const auto text = Read(name);
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    }

    // Behind what is in the file.
    bool Append(const std::string& name, std::string_view text) const
    {
        std::ofstream stream(path_ / name, std::ios::binary | std::ios::app);
        stream << text << std::flush;
        return stream.good();
    }

private:
    std::filesystem::path before_;
    std::filesystem::path path_;
};

// A variable of the environment that is there as long as this lives. Only for names that nobody else uses.
class EnvironmentVariable
{
public:
    EnvironmentVariable(std::string name, const char* value) : name_(std::move(name))
    {
        Platform::SetVariable(name_.c_str(), value);
    }
    ~EnvironmentVariable() { Platform::SetVariable(name_.c_str(), nullptr); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    std::string name_;
};

}  // namespace tvx::check
