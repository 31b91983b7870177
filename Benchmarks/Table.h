// SPDX-License-Identifier: MIT
#pragma once

#include "Benchmarks/Measurement.h"

#include <string>

namespace tvx::bench
{

// The table, as Markdown with columns of one width: it is read in a terminal as well as on a page.
std::string GetHead();
std::string Describe(const Measurement& measured);

}  // namespace tvx::bench
