// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

// Shows a second function to others.
TVX_EXPORT void Another() {}
