// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"

#include <string>

namespace tvx::check
{

// GetValue or LookupValue.
using MapLookup = Result (IMap::*)(const char* key, IObject** out);

// Expects 0 of SetValue.
void SetInMap(Trial& trial, IMap& map, const char* key, IObject* value);

// Expects the value, and one more reference on it for the caller.
void FindsInMap(Trial& trial, IMap& map, const char* key, IObject* value, MapLookup lookUp = &IMap::GetValue);

// Expects nothing under the key, and an out that is emptied.
void MissesInMap(Trial& trial, IMap& map, const char* key, MapLookup lookUp = &IMap::GetValue);

// Expects this many references besides the check's own one.
void HasMapReferences(Trial& trial, const std::string& what, const Ref<ProbeObject>& object, std::uint32_t expected);

}  // namespace tvx::check
