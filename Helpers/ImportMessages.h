// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace tvx
{

// What is said when an import cannot be had: a text, the name of its property in quotation marks, and a text.
struct ImportMessage
{
    std::string_view before;  // with the opening quotation mark
    std::string_view after;   // with the closing one
};

// Nothing was set under the name.
inline constexpr ImportMessage NoProxy = {"LibManager: NULL object proxy returned for \"", "\"."};

// What was set is null or no proxy.
inline constexpr ImportMessage NoProxyInterface = {"LibManager: Proxy interface not supported for \"", "\"."};

// The proxy gives nothing.
inline constexpr ImportMessage NoLibraryObject = {
    "LibManager: Library returned NULL object for \"",
    "\". Probably declared and exported contracts are different or the library is failed to load."};

// What it gives refuses the interface, whose identifier stands between the text behind and the end.
inline constexpr ImportMessage NoLibraryInterface = {"LibManager: Library object for \"",
                                                     "\" does not support required interface "};
inline constexpr std::string_view NoLibraryInterfaceEnd = ". Wrong import declaration or wrong plugin implementation?";

}  // namespace tvx
