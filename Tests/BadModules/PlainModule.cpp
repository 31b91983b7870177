// SPDX-License-Identifier: MIT
// Nothing is wrong here: the code of the modules that have a bad document.
#include "Tests/BadModules/PlainModule.h"
