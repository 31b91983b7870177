// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

#include <cstdlib>

namespace
{

// Its destruction is the module's unloading.
class Crash
{
public:
    ~Crash() { std::abort(); }
};

Crash crash;

}  // namespace
