// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"
#include "Tool/Fuzz/Walk.h"

#include <string>
#include <string_view>
#include <vector>

namespace tvx::fuzz
{

// A walk with its steps, as it is kept in a file: a line "walk NAME" and then a line "OPERATION NUMBER NUMBER" a step, or
// "next-walk 0 0" where another one of its sort begins. Empty lines and what stands behind a # do not count.
struct Replay
{
    const Walk* walk;
    std::vector<Step> steps;
};

std::string Describe(const Replay& replay);

// Reads one; the origin is the name of its file, for messages.
// Fails: BadSettings, with the number of the line.
host::Outcome<Replay> ParseReplay(std::string_view text, const std::string& origin);

}  // namespace tvx::fuzz
