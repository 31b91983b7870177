// SPDX-License-Identifier: MIT
#include "Tool/Checks/NearMisses.h"

namespace tvx::check
{

namespace
{

bool IsSmallLetter(char character)
{
    return character >= 'a' && character <= 'z';
}

bool IsCapital(char character)
{
    return character >= 'A' && character <= 'Z';
}

// A small letter and its capital differ in one bit.
char TurnCase(char character)
{
    return static_cast<char>(character ^ 0x20);
}

}  // namespace

std::vector<std::string> GetPrefixes(std::string_view id)
{
    std::vector<std::string> prefixes;
    for (std::size_t length = 1; length < id.size(); ++length)
        prefixes.emplace_back(id.substr(0, length));
    return prefixes;
}

std::vector<std::string> GetLonger(std::string_view id)
{
    std::vector<std::string> longer;
    for (const char character : {'0', ' ', '.', '/', '\n', '\x01', '\x7f', '\xff'})
        longer.push_back(std::string(id) + character);
    longer.push_back(" " + std::string(id));
    return longer;
}

std::vector<std::string> GetOtherCases(std::string_view id)
{
    std::vector<std::string> others;
    std::string capitals(id);
    for (std::size_t at = 0; at < id.size(); ++at)
    {
        if (!IsSmallLetter(id[at]) && !IsCapital(id[at]))
            continue;
        others.emplace_back(id)[at] = TurnCase(id[at]);
        if (IsSmallLetter(id[at]))
            capitals[at] = TurnCase(id[at]);
    }
    if (capitals != id)
        others.push_back(capitals);
    return others;
}

std::vector<std::string> GetOtherVersions(std::string_view id)
{
    const auto slash = id.rfind('/');
    if (slash == std::string_view::npos)
        return {};
    const std::string name(id.substr(0, slash + 1));
    const std::string version(id.substr(slash + 1));
    return {name + "0" + version, name + "0.0", name + "999.0", name + "*"};
}

}  // namespace tvx::check
