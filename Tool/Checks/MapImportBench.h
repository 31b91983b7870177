// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IImportsContainer.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"

#include <string>

namespace tvx::check
{

// The one import that settings maps use.
constexpr const char SerializerImport[] = "Serializer";

// The imports of the settings map factory.
Ref<IImportsContainer> GetMapImports(Trial& trial);

// Expects 0 of SetImport.
void ImportToMaps(Trial& trial, IImportsContainer& container, const char* name, IObjectBase* object);

// Expects 0 of ClearImports.
void ClearMapImports(Trial& trial, IImportsContainer& container);

// Expects this many references besides the check's own one.
void HasImportReferences(Trial& trial, const std::string& what, IObjectBase& object, std::uint32_t expected);

// What a settings map's lookup of its serializer writes, without the map's own report behind it.
std::string LookUpSerializer(Trial& trial);

}  // namespace tvx::check
