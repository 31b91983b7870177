// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/CCalls.h"

#include <cstddef>

namespace tvx::test
{

using check::FromC;
using check::ToC;

}  // namespace tvx::test
