// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

#include <cfenv>
#include <clocale>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <string_view>

namespace
{

void ChangeLocale()
{
    const std::string_view now = std::setlocale(LC_CTYPE, nullptr);
    std::setlocale(LC_CTYPE, now == "C" ? "C.UTF-8" : "C");
}

// Makes itself at home in the host's process.
__attribute__((constructor)) void Settle()
{
    ChangeLocale();
    std::filesystem::current_path("/");
    setenv("TVX_CHANGES_SURROUNDINGS", "1", 1);
    std::fesetround(FE_UPWARD);
    std::set_terminate([] { std::abort(); });
    std::set_new_handler([] { throw std::bad_alloc(); });
    std::cout << std::hex;
}

}  // namespace
