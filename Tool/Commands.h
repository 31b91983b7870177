// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ModuleCatalog.h"
#include "Tool/Console.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace tvx::tool
{

// Each adds one command to the program. A command that was chosen puts its exit code into code.
void AddListCommand(CLI::App& program, ExitCode& code);
void AddInfoCommand(CLI::App& program, ExitCode& code);
void AddProbeCommand(CLI::App& program, ExitCode& code);
void AddExistsCommand(CLI::App& program, ExitCode& code);
void AddResolveCommand(CLI::App& program, ExitCode& code);
void AddDiffCommand(CLI::App& program, ExitCode& code);
void AddCheckCommand(CLI::App& program, ExitCode& code);
void AddFuzzCommand(CLI::App& program, ExitCode& code);
void AddSettingsCommand(CLI::App& program, ExitCode& code);
void AddImageCommand(CLI::App& program, ExitCode& code);
void AddLogCommand(CLI::App& program, ExitCode& code);
void AddConfigCommand(CLI::App& program, ExitCode& code);
void AddTourCommand(CLI::App& program, ExitCode& code);
void AddCompletionCommand(CLI::App& program, ExitCode& code);

// Where modules are looked for: the places given by --path, then TVX_PATH, then the program's own folder, then the folder
// that modules are installed in together with the program.
class SearchOptions
{
public:
    void AddTo(CLI::App& command);
    // The places given come before all others.
    host::ModuleCatalog MakeCatalog(const std::vector<std::string>& first = {}) const;

private:
    std::vector<std::string> paths_;
};

}  // namespace tvx::tool
