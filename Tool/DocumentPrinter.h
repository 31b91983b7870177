// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleCatalog.h"

#include <nlohmann/json.hpp>

#include <string>

namespace tvx::tool
{

// What the document of a module says: for people, one line a fact, and for programs.
std::string DescribeModule(const host::InstalledModule& module);
nlohmann::ordered_json ModuleToJson(const host::InstalledModule& module);

// JSON as the commands print it. Bytes that are no UTF-8 become the replacement character.
std::string PrintJson(const nlohmann::ordered_json& json);

}  // namespace tvx::tool
