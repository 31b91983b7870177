// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/Result.h"

#include <new>
#include <string>
#include <string_view>

namespace tvx::host
{

// Writes "JsonSerializer: ", what and a full stop as one line to standard output.
void WriteJsonProblem(std::string_view what) noexcept;

// A text as problems show it: in quotation marks, without control characters, and cut when it is very long.
std::string QuoteForProblem(std::string_view text);

// The first failure of a document. From then on every operation on the document gives it again, so that an object which
// does not look at results cannot lose it.
class JsonFailure
{
public:
    // 0 as long as nothing failed.
    Result Get() const noexcept { return result_; }

    void Clear() noexcept { result_ = TVX_OK; }

    // Keeps result and writes why, unless there is a failure already. Gives the failure that is kept.
    Result Set(Result result, std::string_view why) noexcept;

    // The same without a line of its own, where the reason is written already.
    Result SetSilently(Result result) noexcept;

    // One operation on the document: gives the failure there is, or what body gives. Nothing is thrown across it.
    template <class Body>
    Result Run(Body&& body) noexcept
    try
    {
        return TVX_FAILED(result_) ? result_ : body();
    }
    catch (const std::bad_alloc&)
    {
        return Set(TVX_E_POINTER, "memory is exhausted");
    }
    catch (...)
    {
        return Set(TVX_E_EXCEPTION, "an exception was thrown");
    }

private:
    Result result_ = TVX_OK;
};

}  // namespace tvx::host
