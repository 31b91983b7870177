// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Objects.h"

#include <string>
#include <vector>

namespace tvx::check
{

// One of the two ways to walk a settings map.
struct IteratorKind
{
    const char* name;
    Result (ISimpleMap::*make)(ISimpleMapIterator** out);
};

constexpr IteratorKind FullIterator = {"GetIterator", &ISimpleMap::GetIterator};
constexpr IteratorKind NoSubMapsIterator = {"GetIteratorNoSubMaps", &ISimpleMap::GetIteratorNoSubMaps};
constexpr IteratorKind IteratorKinds[] = {FullIterator, NoSubMapsIterator};

// A new map with a text under each key.
Ref<ISimpleMap5> MakeMapOfKeys(Trial& trial, const std::vector<std::string>& keys);

// It must not outlive the map.
Ref<ISimpleMapIterator> MakeMapIterator(Trial& trial, const IteratorKind& kind, ISimpleMap& map);

// Expects that the iterator is at the end by every way of asking.
void IsIteratorAtEnd(Trial& trial, const std::string& when, ISimpleMapIterator& iterator);

// The keys from the current one on; expects that Next and IsEnd say where the iterator is.
std::vector<std::string> GetIteratorKeys(Trial& trial, ISimpleMapIterator& iterator);

}  // namespace tvx::check
