// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

// What the command line says.
struct Options
{
    std::string configuration;        // the file; empty for none
    std::vector<std::string> places;  // modules and folders of modules, besides the installed ones
    bool traceLives = false;          // whether to tell in the end what is still held
};

// Nothing for a command line that is none, after a line on standard error.
std::optional<Options> ReadOptions(int count, char** arguments);
