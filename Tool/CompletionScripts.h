// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/CommandTree.h"

#include <string>
#include <vector>

namespace tvx::tool
{

// The script with which a shell completes the program's command lines. Each shell is given the same tables, and reads the
// words before the cursor in the same way as the program.
std::string MakeBashCompletion(const std::vector<CommandWords>& commands);
std::string MakeZshCompletion(const std::vector<CommandWords>& commands);
std::string MakeFishCompletion(const std::vector<CommandWords>& commands);

}  // namespace tvx::tool
