// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"
#include "Platform/StandardStreams.h"

#include <string>
#include <string_view>

namespace tvx::tool
{

// What the program tells its caller.
enum ExitCode : int
{
    Ok = 0,
    AnswerIsNo = 1,
    Usage = 2,
    CannotRead = 3,
    Misbehaved = 4,
};

ExitCode GetExitCode(host::ErrorKind kind);

// Where the commands write: answers to standard output, everything else to standard error. What modules write to standard
// output while it lives is kept aside, so that it never stands between the answers.
class Console
{
public:
    // Ends the program when standard output cannot be written to: an answer that is cut off is none.
    void Print(std::string_view text) const;

    // One line.
    static void Complain(std::string_view what);

    // Complains that standard output cannot be written to, and gives the exit code.
    static ExitCode FailForOutput();

    // Complains and gives the exit code. When a module misbehaved, what modules had to say meanwhile follows: it may be the
    // reason.
    ExitCode Fail(const host::Error& error) const;

    // What keeps standard output aside.
    const Platform::OutputDiversion& GetOutput() const { return output_; }

private:
    Platform::OutputDiversion output_;
};

}  // namespace tvx::tool
