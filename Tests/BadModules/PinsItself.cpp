// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

#include <dlfcn.h>

namespace
{

// Keeps the file in the process for good.
__attribute__((constructor)) void Pin()
{
    Dl_info own = {};
    if (dladdr(reinterpret_cast<void*>(&GetExport), &own) != 0)
        dlopen(own.dli_fname, RTLD_NOW | RTLD_NODELETE);
}

}  // namespace
