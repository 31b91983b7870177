// SPDX-License-Identifier: MIT
#include "Host/JsonSerializer/JsonFailure.h"

#include "Platform/StandardStreams.h"

#include <algorithm>
#include <ostream>

namespace tvx::host
{

namespace
{

constexpr std::size_t LongestQuote = 100;

bool IsControl(char character)
{
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

}  // namespace

void WriteJsonProblem(std::string_view what) noexcept
{
    try
    {
        Platform::GetStandardOutput() << "JsonSerializer: " << what << '.' << std::endl;
    }
    catch (...)  // nothing that goes wrong here changes a result
    {
    }
}

std::string QuoteForProblem(std::string_view text)
{
    std::string shown(text.substr(0, LongestQuote));
    std::replace_if(shown.begin(), shown.end(), IsControl, '?');
    return '"' + shown + (text.size() > LongestQuote ? "...\"" : "\"");
}

Result JsonFailure::Set(Result result, std::string_view why) noexcept
{
    if (!TVX_FAILED(result_))
        WriteJsonProblem(why);
    return SetSilently(result);
}

Result JsonFailure::SetSilently(Result result) noexcept
{
    if (!TVX_FAILED(result_))
        result_ = result;
    return result_;
}

}  // namespace tvx::host
