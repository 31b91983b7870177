// SPDX-License-Identifier: MIT
#include "Platform/AddressOrigin.h"

#include <dlfcn.h>

namespace tvx::Platform
{

std::string GetAddressOrigin(const void* address)
{
    Dl_info found = {};
    const bool known = dladdr(address, &found) != 0 && found.dli_fname != nullptr;
    return known ? found.dli_fname : "";
}

}  // namespace tvx::Platform
