// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleCatalog.h"

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>

namespace tvx::test
{

inline std::filesystem::path GetTestModule(const std::string& name)
{
    return std::filesystem::path(TVX_TEST_MODULE_FOLDER) / (name + ".tvxlib");
}

// The modules that users get.
inline std::filesystem::path GetRealModule(const std::string& name)
{
    return std::filesystem::path(TVX_MODULE_FOLDER) / (name + ".tvxlib");
}

inline host::ModuleCatalog MakeCatalog(std::initializer_list<std::filesystem::path> places)
{
    host::ModuleCatalog catalog;
    for (const auto& place : places)
        catalog.Add(place);
    return catalog;
}

// Whether a file is in the memory of this process.
inline bool IsMapped(const std::filesystem::path& file)
{
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);)
    {
        if (line.ends_with(file.string()))
            return true;
    }
    return false;
}

}  // namespace tvx::test
