// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/ChildProcess.h"
#include "Tool/Console.h"

#include <optional>
#include <string>

namespace tvx::tool
{

// What a child of this program that came to its own end adds to its exit code: a module that ends the process gives other
// codes.
constexpr int ChildCodes = 64;

inline ExitCode MakeChildCode(ExitCode code)
{
    return static_cast<ExitCode>(ChildCodes + code);
}

// The exit code of a child that came to its own end.
inline std::optional<ExitCode> FindOwnCode(const Platform::ChildRun& run)
{
    const int code = run.exitCode - ChildCodes;
    if (run.end != Platform::ChildRun::End::Exited || code < Ok || code > Misbehaved)
        return std::nullopt;
    return static_cast<ExitCode>(code);
}

// How a child ended that did not come to its own end: "was ended by signal 11 …".
inline std::string DescribeEnd(const Platform::ChildRun& run)
{
    using End = Platform::ChildRun::End;
    switch (run.end)
    {
    case End::TimedOut: return "did not end in time";
    case End::Killed: return "was ended by " + run.reason;
    case End::Flooded: return "wrote more than " + std::to_string(Platform::MostOutput) + " bytes";
    case End::NotStarted: return "could not be started: " + run.reason;
    case End::Exited: break;
    }
    return "ended by itself with exit code " + std::to_string(run.exitCode);
}

}  // namespace tvx::tool
