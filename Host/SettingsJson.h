// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"
#include "Interfaces/ISimpleMap.h"

#include <string>
#include <string_view>

namespace tvx::host
{

// Settings files: JSON objects within objects, whose members become the keys of a settings map, joined by backslashes.
//
// A map keeps text only. A string is kept as it is; everything else that is no filled object is kept as its JSON text in
// the shortest form: 1920, true, 0.1, null, [1,2], {}; a number beyond 64 bits is rounded. On the way back a text that is
// exactly such a form becomes that value again, every other text a string. So a map survives the way through a file
// unchanged, and a file the way through a map, but for the order of its members and for strings that look like values.

// Writes the settings of a file's text into map, in batch updating mode, and gives their number.
//   origin  the name of the file, for messages
// Fails: BadSettings, with the place. The map is unchanged then, unless it was the map that refused a value.
Outcome<std::size_t> ReadSettings(std::string_view text, std::string_view origin, ISimpleMap& map);

// The text of a settings file for map, indented, with a line end at its end.
// Fails: BadSettings for what no file can say: a key with a value of its own and others below it, more than 200 levels,
// bytes that are no UTF-8; and as ReadEntries.
Outcome<std::string> WriteSettings(ISimpleMap& map);

}  // namespace tvx::host
