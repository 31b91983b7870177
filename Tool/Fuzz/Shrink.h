// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Fuzz/Replay.h"

#include <functional>

namespace tvx::fuzz
{

// Whether a walk still shows what was found.
using StillFails = std::function<bool(const Replay& replay)>;

// Leaves out steps, and makes their numbers small, as long as the walk still fails: what is left needs every step of it.
Replay Shrink(Replay replay, const StillFails& stillFails);

}  // namespace tvx::fuzz
