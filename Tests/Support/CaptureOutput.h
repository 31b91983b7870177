// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace tvx::test
{

// What a call writes to the process's standard output.
template <class Call>
std::string CaptureOutput(Call&& call)
{
    testing::internal::CaptureStdout();
    call();
    return testing::internal::GetCapturedStdout();
}

// Whether output is exactly one report line of the macro from the source file, whatever the line's number.
inline testing::AssertionResult IsReport(const std::string& output, const std::string& macro, const std::string& file)
{
    const std::regex line(macro + ": \\[" + std::regex_replace(file, std::regex("\\."), "\\.") + ":[0-9]+\\]\n");
    if (std::regex_match(output, line))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "not one line \"" << macro << ": [" << file << ":…]\" but: \"" << output
                                       << '"';
}

}  // namespace tvx::test
