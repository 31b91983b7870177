// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/CommandTree.h"

#include <string>
#include <string_view>
#include <vector>

// What the scripts of bash and zsh have in common.
namespace tvx::tool
{

// The text as one word of these shells, whatever characters it has.
std::string QuoteForShell(std::string_view text);

// One array of the branch of a command.
std::string MakeShellArray(const char* name, const std::vector<std::string>& elements);

// The function _tvx_value: puts into value what the option $2 of the command $1 takes.
std::string MakeShellValueTable(const std::vector<CommandWords>& commands);

}  // namespace tvx::tool
