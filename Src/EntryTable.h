// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

namespace tvx
{

// The entries of a settings map, in the byte order of their keys. Entries never move and are never removed, so iterators
// and the texts of keys stay valid as long as the table.
using EntryTable = std::map<std::string, std::string, std::less<>>;

}  // namespace tvx
