// SPDX-License-Identifier: MIT
#include "Tool/Checks/MacroLines.h"

#include <algorithm>
#include <regex>

namespace tvx::check
{

namespace
{

// Of a line with its end.
std::string GetMacro(const std::string& line)
{
    static const std::regex report(R"(([A-Z_]+): \[[^\n]+:[0-9]+\]\n)");
    std::smatch match;
    return std::regex_match(line, match, report) ? match[1].str() : line;
}

}  // namespace

std::vector<std::string> GetMacros(std::string_view output)
{
    std::vector<std::string> macros;
    while (!output.empty())
    {
        const auto length = std::min(output.find('\n'), output.size() - 1) + 1;
        macros.push_back(GetMacro(std::string(output.substr(0, length))));
        output.remove_prefix(length);
    }
    return macros;
}

}  // namespace tvx::check
