// SPDX-License-Identifier: MIT
#include "Tool/Commands.h"

#include <exception>
#include <iostream>

namespace
{

constexpr const char ExitCodes[] = "Exit codes: 0 done, 1 the answer is no (a key is absent, a picture has not\n"
                                   "the form that is needed, a configuration has warnings, a check found\n"
                                   "something), 2 wrong usage, 3 a file or module cannot be read, loaded or written,\n"
                                   "4 a module misbehaved, crashed or did not end in time.";

// An answer that is cut off is none.
int PrintAnswer(const CLI::App& program, const CLI::Success& asked)
{
    const int code = program.exit(asked);
    if (std::cout.flush())
        return code;
    std::cerr << "tvx: standard output cannot be written to" << std::endl;
    return tvx::tool::CannotRead;
}

int Run(int count, char** arguments)
{
    CLI::App program("Looks into modules of the TVX component framework and works with them", "tvx");
    program.set_version_flag("--version", TVX_VERSION);
    program.require_subcommand(1);
    program.footer(ExitCodes);
    auto code = tvx::tool::Ok;
    tvx::tool::AddListCommand(program, code);
    tvx::tool::AddInfoCommand(program, code);
    tvx::tool::AddProbeCommand(program, code);
    tvx::tool::AddExistsCommand(program, code);
    tvx::tool::AddResolveCommand(program, code);
    tvx::tool::AddDiffCommand(program, code);
    tvx::tool::AddCheckCommand(program, code);
    tvx::tool::AddFuzzCommand(program, code);
    tvx::tool::AddSettingsCommand(program, code);
    tvx::tool::AddImageCommand(program, code);
    tvx::tool::AddLogCommand(program, code);
    tvx::tool::AddConfigCommand(program, code);
    tvx::tool::AddTourCommand(program, code);
    tvx::tool::AddCompletionCommand(program, code);
    try
    {
        program.parse(count, arguments);
    }
    catch (const CLI::Success& asked)  // for help or the version
    {
        return PrintAnswer(program, asked);
    }
    catch (const CLI::ParseError& wrong)
    {
        std::cerr << "tvx: " << tvx::host::MakeOneLine(wrong.what()) << " (tvx --help tells more)" << std::endl;
        return tvx::tool::Usage;
    }
    return code;
}

}  // namespace

int main(int count, char** arguments)
{
    try
    {
        return Run(count, arguments);
    }
    catch (const std::exception& failure)
    {
        std::cerr << "tvx: " << failure.what() << std::endl;
        return tvx::tool::CannotRead;
    }
}
