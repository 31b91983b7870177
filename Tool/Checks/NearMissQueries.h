// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Queries.h"

namespace tvx::check
{

// Each fails the check unless the object refuses every text of its kind, of all known identifiers: those that it
// answers as well as the others.
//   what  the object, as a noun phrase
void ExpectPrefixesRefused(Trial& trial, IObjectBase& object, const std::string& what);
void ExpectLongerIdsRefused(Trial& trial, IObjectBase& object, const std::string& what);
void ExpectOtherCasesRefused(Trial& trial, IObjectBase& object, const std::string& what);
void ExpectOtherVersionsRefused(Trial& trial, IObjectBase& object, const std::string& what);

// Fails the check unless every query with a null out gives -3 and adds no reference.
void ExpectNullOutsRefused(Trial& trial, IObjectBase& object, const std::string& what);

}  // namespace tvx::check
