// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/ILogger.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tool/Checks/ScriptedConfiguration.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace tvx::test
{

// A text for the logger to copy.
class ConfiguredText final : public ClassImpl<ConfiguredText, IString>
{
public:
    using Interfaces = InterfaceList<IString, IObjectBase>;

    explicit ConfiguredText(std::string text) : text_(std::move(text)) {}

    const char* GetText() override { return text_.c_str(); }
    std::uint32_t GetLength() override { return static_cast<std::uint32_t>(text_.size()); }

private:
    std::string text_;
};

// A configuration of the test's own values, which records what is read.
class ScriptedConfiguration final : public check::ScriptedConfigurationImpl<ScriptedConfiguration>
{
public:
    using ScriptedConfigurationImpl::ScriptedConfigurationImpl;

    Result GetString(const char* key, IString** out, std::uint32_t flags) override
    {
        Record("GetString", key, flags);
        std::string text;
        if (TVX_FAILED(Read(key, &text)))
            return TVX_E_FAIL;
        *out = MakeRef<ConfiguredText>(text).Detach();
        return stringResult;
    }

    Result stringResult = TVX_OK;
};

// Replaces an environment variable as long as it lives; no value means that the variable is not there.
class ReplacedVariable
{
public:
    ReplacedVariable(std::string name, const std::optional<std::string>& value) : name_(std::move(name))
    {
        if (const char* const before = std::getenv(name_.c_str()))
            before_ = before;
        Set(value);
    }

    ~ReplacedVariable() { Set(before_); }
    ReplacedVariable(const ReplacedVariable&) = delete;
    ReplacedVariable& operator=(const ReplacedVariable&) = delete;

private:
    void Set(const std::optional<std::string>& value) const
    {
        if (value)
            setenv(name_.c_str(), value->c_str(), 1);
        else
            unsetenv(name_.c_str());
    }

    std::string name_;
    std::optional<std::string> before_;
};

// A folder that is the current one as long as it lives.
class CurrentFolder : public ScratchFolder
{
public:
    CurrentFolder() : before_(std::filesystem::current_path()) { std::filesystem::current_path(GetPath()); }
    ~CurrentFolder() { std::filesystem::current_path(before_); }

    bool Has(const std::string& name) const { return std::filesystem::exists(GetPath() / name); }

    std::string Read(const std::string& name) const
    {
        std::ifstream stream(GetPath() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path before_;
};

constexpr std::size_t TimeStampLength = 19;

// The lines of a log without their time, joined: what the logger was told.
inline std::string WithoutTimes(const std::string& log)
{
    std::string texts;
    for (std::size_t begin = 0; begin < log.size();)
    {
        const auto end = log.find('\n', begin) + 1;
        const auto line = log.substr(begin, end - begin);
        const bool timed = line.size() > TimeStampLength && line[4] == '-' && line[13] == ':';
        texts += timed ? line.substr(TimeStampLength) : "(no time) " + line;
        begin = end == 0 ? log.size() : end;
    }
    return texts;
}

// An informative message with a source "S".
inline Result Say(ILogger& logger, const char* loggerName, const char* message)
{
    return logger.Log(loggerName, LogLevel::Info, "S", "scope", "file.cpp", 1, message);
}

}  // namespace tvx::test
