// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

// Texts that are almost an identifier. An identifier is known by exactly its bytes, so none of them means the same.
namespace tvx::check
{

// What the identifier begins with, from one character on; never all of it.
std::vector<std::string> GetPrefixes(std::string_view id);

// The identifier with a character more, behind or before it.
std::vector<std::string> GetLonger(std::string_view id);

// The identifier with one letter in the other case, and all of it in capitals.
std::vector<std::string> GetOtherCases(std::string_view id);

// The identifier with a version that reads alike or that nobody has; nothing for an identifier without a version.
std::vector<std::string> GetOtherVersions(std::string_view id);

}  // namespace tvx::check
