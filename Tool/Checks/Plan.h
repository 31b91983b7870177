// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Check.h"

#include <string>
#include <string_view>
#include <vector>

namespace tvx::check
{

// A check that is to be run, with what it belongs to.
struct PlannedCheck
{
    const Family* family;
    const Check* check;
};

// Patterns of names of checks or of their classes; in them * stands for any characters and ? for one.
struct Selection
{
    std::vector<std::string> only;     // empty for all
    std::vector<std::string> exclude;  // has the last word
};

// Whether the whole text is what the pattern says.
bool MatchesPattern(std::string_view pattern, std::string_view text);

// The checks of some families that are selected, in their order.
std::vector<PlannedCheck> MakePlan(std::span<const Family* const> families, const Selection& selection);

}  // namespace tvx::check
