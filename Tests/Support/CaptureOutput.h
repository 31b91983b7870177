// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

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
inline testing::AssertionResult IsReport(std::string_view output, const std::string& macro, const std::string& file)
{
    const auto head = macro + ": [" + file + ":";
    const std::string_view tail = "]\n";
    const bool framed = output.size() > head.size() + tail.size() && output.starts_with(head) && output.ends_with(tail);
    const auto number = framed ? output.substr(head.size(), output.size() - head.size() - tail.size()) : "none";
    if (number.find_first_not_of("0123456789") == std::string_view::npos)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "not one line \"" << head << "…]\" but: \"" << output << '"';
}

}  // namespace tvx::test
