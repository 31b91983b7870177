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

// The words of a command as the script of a shell has them.
struct ShellWords
{
    std::vector<std::string> commands;
    std::vector<std::string> options;
};

// The whole script: the head, which begins a case of commands, a branch with the words of each, and what walks through them.
std::string MakeShellScript(const char* head, ShellWords (*getWords)(const CommandWords& command), const char* walk,
                            const std::vector<CommandWords>& commands);

}  // namespace tvx::tool
