// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Trial.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvx::check
{

// What each line of an output is: the macro's name where it is a report line, else the line itself.
std::vector<std::string> GetMacros(std::string_view output);

// Expects the result code of the call, and exactly the report lines of these macros in this order: an operation that
// passes on the failure of another one reports it a second time.
template <class Call>
void ReportsInOrder(Trial& trial, const std::string& what, const std::vector<std::string>& macros, Result expected,
                    Call&& call)
{
    Result came = TVX_OK;
    const auto output = trial.TakeOutput([&] { came = call(); });
    trial.Equal("the report lines of " + what, GetMacros(output), macros);
    trial.Gives(what, came, expected);
}

}  // namespace tvx::check
