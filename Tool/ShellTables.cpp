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

std::string MakeShellArray(const char* name, const std::vector<std::string>& elements)
{
    if (elements.empty())
        return "";
    std::string text = "        " + std::string(name) + "=(\n";
    for (const auto& element : elements)
        text += "            " + QuoteForShell(element) + "\n";
    return text + "        )\n";
}

std::string MakeShellValueTable(const std::vector<CommandWords>& commands)
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

}  // namespace tvx::tool
