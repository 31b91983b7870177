// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/Result.h"
#include "Platform/StandardStreams.h"

#include <charconv>
#include <iterator>

namespace tvx
{

// Writes the one line that names a failed check to standard output. Nothing that goes wrong here changes a result.
inline void WriteReport(const char* macro, const char* file, int line) noexcept
{
    char digits[16] = {};
    const auto end = std::to_chars(std::begin(digits), std::end(digits), line).ptr;
    Platform::WriteLine({macro, ": [", file, ":", {digits, static_cast<std::size_t>(end - digits)}, "]"});
}

}  // namespace tvx

// The checks for failures that are programming errors. Each tests, writes its own name with file and line, and returns from
// the operation. A failure that is no programming error is a plain if, without a report.

// Gives -1 when the condition holds.
#define TVX_RETURN_FAIL_IF(condition)                                                                                  \
    do                                                                                                                 \
    {                                                                                                                  \
        if (condition)                                                                                                 \
        {                                                                                                              \
            ::tvx::WriteReport("TVX_RETURN_FAIL_IF", __FILE__, __LINE__);                                              \
            return ::tvx::TVX_E_FAIL;                                                                                  \
        }                                                                                                              \
    } while (false)

// Gives -1 when the pointer is null.
#define TVX_RETURN_FAIL_IF_NULL(pointer)                                                                               \
    do                                                                                                                 \
    {                                                                                                                  \
        if ((pointer) == nullptr)                                                                                      \
        {                                                                                                              \
            ::tvx::WriteReport("TVX_RETURN_FAIL_IF_NULL", __FILE__, __LINE__);                                         \
            return ::tvx::TVX_E_FAIL;                                                                                  \
        }                                                                                                              \
    } while (false)

// Gives -1 when the result is a failure, whichever it is.
#define TVX_RETURN_FAIL_IF_FAILED(result)                                                                              \
    do                                                                                                                 \
    {                                                                                                                  \
        if (::tvx::TVX_FAILED(result))                                                                                 \
        {                                                                                                              \
            ::tvx::WriteReport("TVX_RETURN_FAIL_IF_FAILED", __FILE__, __LINE__);                                       \
            return ::tvx::TVX_E_FAIL;                                                                                  \
        }                                                                                                              \
    } while (false)

// Gives -4 when the pointer is null.
#define TVX_RETURN_EPOINTER_IF_NULL(pointer)                                                                           \
    do                                                                                                                 \
    {                                                                                                                  \
        if ((pointer) == nullptr)                                                                                      \
        {                                                                                                              \
            ::tvx::WriteReport("TVX_RETURN_EPOINTER_IF_NULL", __FILE__, __LINE__);                                     \
            return ::tvx::TVX_E_POINTER;                                                                               \
        }                                                                                                              \
    } while (false)

// Gives -7 when the condition does not hold.
#define TVX_CHECK_PRECOND(condition)                                                                                   \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
        {                                                                                                              \
            ::tvx::WriteReport("TVX_CHECK_PRECOND", __FILE__, __LINE__);                                               \
            return ::tvx::TVX_E_PRECONDITION;                                                                          \
        }                                                                                                              \
    } while (false)

// Gives the result itself when it is a failure.
#define TVX_FORWARD_FAILURE(result)                                                                                    \
    do                                                                                                                 \
    {                                                                                                                  \
        const ::tvx::Result tvxForwarded = (result);                                                                   \
        if (::tvx::TVX_FAILED(tvxForwarded))                                                                           \
        {                                                                                                              \
            ::tvx::WriteReport("TVX_FORWARD_FAILURE", __FILE__, __LINE__);                                             \
            return tvxForwarded;                                                                                       \
        }                                                                                                              \
    } while (false)
