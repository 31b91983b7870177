// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/LoggerBench.h"

namespace tvx::check
{

// Turns standard output off and output to a file on, with the lines from one flush to the next, and gives the logger a
// crash-dump server to be silent with. More values may be added or put in the place of these.
Ref<ScriptedConfiguration> ConfigureFile(LoggerBench& logger, std::int32_t threshold,
                                         const ScriptedConfiguration::Values& more = {});

// Unloads the module, whatever it writes meanwhile. Everything of it has to be released.
void Unload(Trial& trial);

}  // namespace tvx::check
