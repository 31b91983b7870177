// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/MacroLines.h"
#include "Tool/Checks/Trial.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tvx::fuzz
{

// The macros of the report lines that a call writes, in their order: a failure that is passed on is reported again.
using Macros = std::array<const char*, 2>;

constexpr Macros Silent = {};
constexpr Macros NullPointer = {"TVX_RETURN_EPOINTER_IF_NULL"};
constexpr Macros NullPointerForwarded = {"TVX_RETURN_EPOINTER_IF_NULL", "TVX_FORWARD_FAILURE"};
constexpr Macros Precondition = {"TVX_CHECK_PRECOND"};
constexpr Macros PreconditionForwarded = {"TVX_CHECK_PRECOND", "TVX_FORWARD_FAILURE"};
constexpr Macros FailIf = {"TVX_RETURN_FAIL_IF"};
constexpr Macros FailIfNull = {"TVX_RETURN_FAIL_IF_NULL"};
constexpr Macros FailIfFailed = {"TVX_RETURN_FAIL_IF_FAILED"};
constexpr Macros Forwarded = {"TVX_FORWARD_FAILURE"};

inline std::vector<std::string> GetLines(const Macros& macros)
{
    std::vector<std::string> lines;
    for (const auto* const macro : macros)
    {
        if (macro != nullptr)
            lines.emplace_back(macro);
    }
    return lines;
}

// A call that is refused whatever was done before. The subject is what it is called with, and has a member "outs" with
// everything that a call could write to.
template <class Subject>
struct Refusal
{
    const char* what;
    Macros macros;
    Result code;
    Result (*call)(Subject& subject);
};

// Tries one of the refused calls, by a number: it must leave the outs alone. That it changes nothing else shows when
// the model is compared.
template <class Subject, std::size_t Count>
void TryRefused(check::Trial& trial, const Refusal<Subject> (&refusals)[Count], std::uint32_t number, Subject subject)
{
    const auto& refusal = refusals[number % Count];
    const auto outs = subject.outs;
    check::ReportsInOrder(trial, refusal.what, GetLines(refusal.macros), refusal.code,
                          [&] { return refusal.call(subject); });
    trial.Expect(subject.outs == outs, std::string(refusal.what) + " to leave its out alone", "another value in it");
}

// A call that gives an object only when it succeeds: the mark that stands in its out has to stay there.
template <class Interface, class Call>
void LeavesOutAlone(check::Trial& trial, const std::string& what, Result expected, Interface* mark, Call&& call)
{
    Interface* out = mark;
    trial.Gives(what, call(&out), expected);
    trial.Same("the out of " + what, out, mark);
}

}  // namespace tvx::fuzz
