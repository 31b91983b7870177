// SPDX-License-Identifier: MIT
#include "Tool/Checks/Show.h"

#include "Interfaces/Result.h"

namespace tvx::check
{

namespace
{

constexpr std::size_t LongestText = 120;

struct NamedCode
{
    Result code;
    const char* name;
};

constexpr NamedCode NamedCodes[] = {
    {TVX_OK, "TVX_OK"},
    {TVX_E_FAIL, "TVX_E_FAIL"},
    {TVX_E_NOINTERFACE, "TVX_E_NOINTERFACE"},
    {TVX_E_POINTER, "TVX_E_POINTER"},
    {TVX_E_EXCEPTION, "TVX_E_EXCEPTION"},
    {TVX_E_PRECONDITION, "TVX_E_PRECONDITION"},
    {TVX_E_UNSUPPORTED_FORMAT, "TVX_E_UNSUPPORTED_FORMAT"},
    {TVX_S_NOKEY, "TVX_S_NOKEY"},
    {TVX_S_VALUE, "TVX_S_VALUE"},
};

void AppendShown(std::string& text, char character)
{
    constexpr const char digits[] = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(character);
    if (character == '\n')
        text += "\\n";
    else if (character == '\r')
        text += "\\r";
    else if (code < 0x20 || code > 0x7E)
        text.append("\\x").append(1, digits[code / 16]).append(1, digits[code % 16]);
    else
        text += character;
}

}  // namespace

std::string Show(std::string_view text)
{
    std::string shown = "\"";
    for (const char character : text.substr(0, LongestText))
        AppendShown(shown, character);
    shown += '"';
    if (text.size() > LongestText)
        shown.append("… (").append(std::to_string(text.size())).append(" bytes)");
    return shown;
}

std::string ShowResult(std::int32_t code)
{
    for (const auto& named : NamedCodes)
    {
        if (named.code == code)
            return std::to_string(code) + " (" + named.name + ")";
    }
    return std::to_string(code);
}

}  // namespace tvx::check
