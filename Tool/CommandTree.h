// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace tvx::tool
{

// What an option or a place of a command takes: the words to choose from, with blanks between them, or one of these. An
// option that takes nothing has an empty text.
constexpr const char TakesFile[] = ":file";
constexpr const char TakesAnything[] = ":any";

// A command within another.
struct NamedCommand
{
    std::string name;
    std::string description;
};

struct NamedOption
{
    std::vector<std::string> names;  // with their dashes
    std::string description;
    std::string takes;
};

// What may stand behind a command, for who completes command lines.
struct CommandWords
{
    std::string path;  // from the program on, such as "tvx settings get"
    std::vector<NamedCommand> commands;
    std::vector<NamedOption> options;  // also those that are understood here and belong to a command further up
    std::vector<std::string> places;   // what stands at them, from the first on
};

// The program itself, then its commands and theirs, in the order of their adding.
std::vector<CommandWords> ListCommandWords(const CLI::App& program);

}  // namespace tvx::tool
