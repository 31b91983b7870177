// SPDX-License-Identifier: MIT
#include "Tool/Commands.h"
#include "Tool/CompletionScripts.h"

#include <map>
#include <memory>

namespace tvx::tool
{

namespace
{

using MakeScript = std::string (*)(const std::vector<CommandWords>& commands);

const std::map<std::string, MakeScript>& GetShells()
{
    static const std::map<std::string, MakeScript> shells = {
        {"bash", &MakeBashCompletion}, {"fish", &MakeFishCompletion}, {"zsh", &MakeZshCompletion}};
    return shells;
}

ExitCode PrintScript(const CLI::App& program, const std::string& shell)
{
    const Console console;
    console.Print(GetShells().at(shell)(ListCommandWords(program)));
    return Ok;
}

}  // namespace

void AddCompletionCommand(CLI::App& program, ExitCode& code)
{
    const auto shell = std::make_shared<std::string>();
    auto* const command =
        program.add_subcommand("completion", "Print the script with which a shell completes command lines of tvx");
    command->add_option("SHELL", *shell, "The shell")->required()->check(CLI::IsMember(&GetShells()));
    command->callback([&program, shell, &code] { code = PrintScript(program, *shell); });
}

}  // namespace tvx::tool
