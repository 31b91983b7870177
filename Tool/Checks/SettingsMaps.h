// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Objects.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What checks of settings maps write and read. Everything that a map refuses fails the check.
namespace tvx::check
{

using Texts = std::vector<std::string>;
using Entries = std::initializer_list<std::pair<const char*, const char*>>;

// Writes the entries in this order, with SetString.
void Fill(Trial& trial, ISimpleMap& map, Entries entries);

// A new map, in batch updating mode, with these entries.
Ref<ISimpleMap5> MakeFilledMap(Trial& trial, Entries entries);

// The text under a key, which has to be there.
Ref<IString> GetText(Trial& trial, ISimpleMap& map, const char* key);
void ExpectText(Trial& trial, ISimpleMap& map, const char* key, std::string_view expected);

// GetString gives 101 and writes nothing to its out.
void ExpectAbsent(Trial& trial, ISimpleMap& map, const char* key);

// All entries in the order of the map's own iterator, each as "key=value".
Texts GetEntries(Trial& trial, ISimpleMap& map);
void ExpectEntries(Trial& trial, const std::string& what, ISimpleMap& map, const Texts& expected);

bool HasKey(Trial& trial, ISimpleMap& map, const char* key);
bool IsBatchUpdating(Trial& trial, ISimpleMap& map);

}  // namespace tvx::check
