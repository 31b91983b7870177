// SPDX-License-Identifier: MIT
#include "Tool/Console.h"

#include <cstdlib>
#include <iostream>

namespace tvx::tool
{

ExitCode GetExitCode(host::ErrorKind kind)
{
    return kind == host::ErrorKind::Misbehaved ? Misbehaved : CannotRead;
}

void Console::Print(std::string_view text) const
{
    if (!output_.Write(text))
        std::exit(FailForOutput());
}

void Console::Complain(std::string_view what)
{
    std::cerr << "tvx: " << what << std::endl;
}

ExitCode Console::FailForOutput()
{
    Complain("standard output cannot be written to");
    return CannotRead;
}

ExitCode Console::Fail(const host::Error& error) const
{
    Complain(error.message);
    const auto code = GetExitCode(error.kind);
    if (code == Misbehaved)
        std::cerr << output_.Read();
    return code;
}

}  // namespace tvx::tool
