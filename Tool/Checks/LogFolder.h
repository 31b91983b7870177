// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/Environment.h"
#include "Tool/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

namespace tvx::check
{

// An empty folder that is the current one as long as it lives, and is gone with all its content afterwards.
class LogFolder
{
public:
    LogFolder() : before_(std::filesystem::current_path()) { std::filesystem::current_path(folder_.GetPath()); }

    ~LogFolder()
    {
        std::error_code ignored;
        std::filesystem::current_path(before_, ignored);
    }

    LogFolder(const LogFolder&) = delete;
    LogFolder& operator=(const LogFolder&) = delete;

    bool IsEmpty() const { return std::filesystem::is_empty(folder_.GetPath()); }
    bool Has(const std::string& name) const { return std::filesystem::exists(folder_.GetPath() / name); }

    // Empty for a file that is not there.
    std::string Read(const std::string& name) const
    {
        std::ifstream stream(folder_.GetPath() / name, std::ios::binary);
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
        std::ofstream stream(folder_.GetPath() / name, std::ios::binary | std::ios::app);
        stream << text << std::flush;
        return stream.good();
    }

private:
    tool::TemporaryFolder folder_;
    std::filesystem::path before_;
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
