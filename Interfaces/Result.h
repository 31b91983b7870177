// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace tvx
{

// What an operation answers: negative is failure, everything else is success. The values are part of the binary contract.
using Result = std::int32_t;

constexpr Result TVX_OK = 0;                      // success, with nothing more to say
constexpr Result TVX_E_FAIL = -1;                 // generic failure
constexpr Result TVX_E_NOINTERFACE = -3;          // the object does not answer the identifier asked for
constexpr Result TVX_E_POINTER = -4;              // a required pointer is null, or memory is exhausted
constexpr Result TVX_E_EXCEPTION = -5;            // an exception was caught inside an operation
constexpr Result TVX_E_PRECONDITION = -7;         // the object's state or an argument does not allow the operation
constexpr Result TVX_E_UNSUPPORTED_FORMAT = -11;  // a pixel format that is not handled
constexpr Result TVX_S_NOKEY = 101;               // not a failure: the key is absent
constexpr Result TVX_S_VALUE = 102;               // not a failure: the key is present and its value was delivered

// Whether code is a failure. A caller treats a negative code that it does not know as one, too.
constexpr bool TVX_FAILED(Result code)
{
    return code < 0;
}

}  // namespace tvx
