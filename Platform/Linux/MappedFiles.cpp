// SPDX-License-Identifier: MIT
#include "Platform/MappedFiles.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

namespace tvx::Platform
{

namespace
{

// The name in a line of the system's list: addresses, rights, offset, device, number, name. Memory of no file has no name, or
// one that is no path.
std::string GetName(const std::string& line)
{
    std::istringstream fields(line);
    std::string field;
    for (int i = 0; i < 5; ++i)
        fields >> field;
    std::string name;
    std::getline(fields >> std::ws, name);
    return name.starts_with('/') ? name : "";
}

// The file of each piece, so that a file comes several times.
std::vector<std::string> ReadNames()
{
    std::vector<std::string> names;
    std::ifstream list("/proc/self/maps");
    for (std::string line; std::getline(list, line);)
    {
        auto name = GetName(line);
        if (!name.empty())
            names.push_back(std::move(name));
    }
    return names;
}

}  // namespace

bool IsMapped(const std::filesystem::path& file)
{
    std::error_code failed;
    const auto path = std::filesystem::canonical(file, failed);
    const auto names = ReadNames();
    return !failed && std::find(names.begin(), names.end(), path.string()) != names.end();
}

std::size_t CountMappings()
{
    return ReadNames().size();
}

}  // namespace tvx::Platform
