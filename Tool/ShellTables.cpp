// SPDX-License-Identifier: MIT
#include "Tool/ShellTables.h"

namespace tvx::tool
{

namespace
{

std::string MakeValueBranch(const std::string& path, const NamedOption& option)
{
    std::string patterns;
    for (const auto& name : option.names)
        patterns.append(patterns.empty() ? "" : " | ").append(QuoteForShell(path + " " + name));
    return "    " + patterns + ") value=" + QuoteForShell(option.takes) + " ;;\n";
}

// One array of the branch of a command.
std::string MakeArray(const char* name, const std::vector<std::string>& elements)
{
    if (elements.empty())
        return "";
    std::string text = "        " + std::string(name) + "=(\n";
    for (const auto& element : elements)
        text += "            " + QuoteForShell(element) + "\n";
    return text + "        )\n";
}

std::string MakeBranch(const CommandWords& command, const ShellWords& words)
{
    return "    " + QuoteForShell(command.path) + ")\n" + MakeArray("commands", words.commands) +
           MakeArray("options", words.options) + MakeArray("places", command.places) + "        ;;\n";
}

// The function _tvx_value: puts into value what the option $2 of the command $1 takes.
std::string MakeValueTable(const std::vector<CommandWords>& commands)
{
    std::string text = "# What the option $2 of the command $1 takes; empty for nothing.\n"
                       "_tvx_value()\n{\n    value=\n    case \"$1 $2\" in\n";
    for (const auto& command : commands)
    {
        for (const auto& option : command.options)
        {
            if (!option.takes.empty())
                text += MakeValueBranch(command.path, option);
        }
    }
    return text + "    esac\n}\n\n";
}

}  // namespace

std::string QuoteForShell(std::string_view text)
{
    std::string quoted = "'";
    for (const char character : text)
    {
        if (character == '\'')
            quoted += "'\\'";
        quoted += character;
    }
    return quoted + "'";
}

std::string MakeShellScript(const char* head, ShellWords (*getWords)(const CommandWords& command), const char* walk,
                            const std::vector<CommandWords>& commands)
{
    std::string script = head;
    for (const auto& command : commands)
        script += MakeBranch(command, getWords(command));
    return script + "    esac\n}\n\n" + MakeValueTable(commands) + walk;
}

}  // namespace tvx::tool
