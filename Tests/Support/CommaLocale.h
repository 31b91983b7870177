// SPDX-License-Identifier: MIT
#pragma once

#include "Tests/Support/ScratchFolder.h"

#include <clocale>
#include <cstdlib>
#include <optional>
#include <string>

namespace tvx::test
{

// As long as it lives, the C library's locale is one that writes a comma between a number and its fraction. It is made for
// the purpose, so that a test does not depend on what a system happens to have.
class CommaLocale
{
public:
    CommaLocale()
    {
        const auto make = "localedef -i de_DE -f UTF-8 '" + (folder_.GetPath() / Name).string() + "'";
        isMade_ = std::system(make.c_str()) == 0;
        setenv("LOCPATH", folder_.GetPath().c_str(), 1);
        isSet_ = std::setlocale(LC_ALL, Name) != nullptr;
    }

    ~CommaLocale()
    {
        std::setlocale(LC_ALL, localeBefore_.c_str());
        if (pathBefore_)
            setenv("LOCPATH", pathBefore_->c_str(), 1);
        else
            unsetenv("LOCPATH");
    }

    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    // Whether this system has the program that makes locales.
    static bool CanBeMade() { return std::system("command -v localedef >/dev/null") == 0; }

    bool IsInForce() const { return isMade_ && isSet_ && std::string(std::localeconv()->decimal_point) == ","; }

private:
    static constexpr const char* Name = "de_DE.UTF-8";

    static std::optional<std::string> GetPath()
    {
        const char* const path = std::getenv("LOCPATH");
        return path == nullptr ? std::nullopt : std::optional<std::string>(path);
    }

    const ScratchFolder folder_;
    const std::string localeBefore_ = std::setlocale(LC_ALL, nullptr);
    const std::optional<std::string> pathBefore_ = GetPath();
    bool isMade_ = false;
    bool isSet_ = false;
};

}  // namespace tvx::test
