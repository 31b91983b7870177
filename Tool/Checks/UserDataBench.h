// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"

#include <string>
#include <vector>

namespace tvx::check
{

// A settings map of the module by the face that carries its user data.
Ref<IUserDataContainer> MakeUserDataContainer(Trial& trial);

// Expects 0 of SetUserData.
void Attach(Trial& trial, IUserDataContainer& container, const char* name, IObjectBase* object);

// Expects the object under the name, and one more reference on it for the caller.
void FindsUserData(Trial& trial, IUserDataContainer& container, const char* name, IObjectBase* object);

// Expects nothing under the name, and an out that is emptied.
void MissesUserData(Trial& trial, IUserDataContainer& container, const char* name);

Ref<IUserDataIterator> MakeUserDataIterator(Trial& trial, IUserDataContainer& container);

// The names that a new iterator gives; expects 0 of each Next.
std::vector<std::string> GetUserDataNames(Trial& trial, IUserDataContainer& container);

// Expects this many references besides the check's own one.
void HasContainerReferences(Trial& trial, const std::string& what, IObjectBase& object, std::uint32_t expected);

}  // namespace tvx::check
