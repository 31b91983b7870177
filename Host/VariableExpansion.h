// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tvx::host
{

// The value of an environment variable; nothing when it is not set.
using ReadVariable = std::function<std::optional<std::string>(const std::string& name)>;

// Asks the process's own environment.
std::optional<std::string> ReadEnvironmentVariable(const std::string& name);

// What the logger makes of a text with $NAME in it, and how it came about.
struct VariableExpansion
{
    bool ends;         // whether the logger comes to an end with it at all
    std::string text;  // the expanded text; the text as written when it does not end
    std::vector<std::string>
        loop;              // when it does not end: the variables from one to itself again, where that is the reason
    std::string rootedBy;  // the variable, unset or empty, whose absence makes text begin with its separator
};

// Expands as the logger does: the first $NAME, of letters, digits and underscores, gives way to the variable's value, or to
// nothing, and the search begins anew. Where the logger would never come to an end, or only after more than 1000
// replacements or 64 KiB of growth, this comes to one and says so.
VariableExpansion ExpandVariables(const std::string& text, const ReadVariable& readVariable);

// The first ${NAME} or %NAME% in a text, which the logger does not take for variables; empty when there is none.
std::string FindForeignReference(const std::string& text);

}  // namespace tvx::host
