// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Trial.h"

#include <string>
#include <vector>

namespace tvx::check
{

// The ids of all exports in the module's document, in its order. Skips the check when the document cannot be read.
std::vector<std::string> GetIds(Trial& trial);

// The eight exports as everybody knows them, with all that the document says of them, in document order.
const std::vector<host::Export>& GetPublishedExports();

// Whether the module offers all eight, and perhaps more.
bool OffersPublishedExports(Trial& trial);

// Skips the check when it does not.
void NeedPublishedExports(Trial& trial);

}  // namespace tvx::check
