// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"

namespace tvx::test
{

using check::BareObject;
using check::ImportProxy;
using check::ProbeObject;
using check::RecordingHandler;
using check::SeenEvent;

}  // namespace tvx::test
