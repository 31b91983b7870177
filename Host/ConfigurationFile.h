// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace tvx::host
{

// What a configuration file says at one key.
struct ConfigurationValue
{
    // What sort of value it is.
    enum class Kind
    {
        Bool,
        Number,
        Text,
        Null,
        List,
        Section,  // keys below it
        Untyped,  // an INI file does not say of which type its values are
    };

    Kind kind;         // the sort of value that stands there
    std::string text;  // as the shortest JSON text says it; a Text or Untyped itself; empty for List and Section
};

// By their keys, such as Default\MinLevel.
using ConfigurationEntries = std::map<std::string, ConfigurationValue, std::less<>>;

// The two kinds of configuration files.
enum class ConfigurationFormat
{
    Json,  // objects within objects; a key is the path of names to a value, joined by backslashes
    Ini,  // name=value lines below [section] lines, comments begin with ; or #; a key is the section, a backslash, the name
};

// What a file is, by the extension .json or .ini in letters of any case; without either, a text that begins with an opening
// brace is JSON and every other one INI.
ConfigurationFormat ChooseConfigurationFormat(const std::filesystem::path& file, std::string_view text);

// The entries of a file's text. A JSON object is an entry, too, of the kind Section.
//   origin  the name of the file, for messages
// Fails: BadSettings, with the place: what the format does not allow, a key that stands twice, a NUL, and in JSON a backslash
// in a name, and more than 200 levels.
Outcome<ConfigurationEntries> ParseConfiguration(std::string_view text, ConfigurationFormat format,
                                                 std::string_view origin);

}  // namespace tvx::host
