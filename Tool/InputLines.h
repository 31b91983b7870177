// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <istream>
#include <string>

namespace tvx::tool
{

// Takes the lines of input, one by one, without their end: a line feed, or carriage return and line feed. What stands behind
// the last end is a line, too. Everything that has come is taken before more is waited for: pause is called then, and before
// the end; the reading stops when it gives false. The stream is bad afterwards when it could not be read.
//
// The stream has to have a buffer, which std::cin has only while it is not synchronised with stdin.
void ReadLines(std::istream& input, const std::function<void(const std::string& line)>& take,
               const std::function<bool()>& pause);

}  // namespace tvx::tool
