// SPDX-License-Identifier: MIT
#include "Tool/CommandTree.h"

#include <algorithm>

namespace tvx::tool
{

namespace
{

bool IsFileWord(const std::string& word)
{
    return word == "FILE" || word == "PLACE";
}

// The choice that the type of an option names, as in TEXT:{one,two}; empty when everything is allowed.
std::string FindChoice(const std::string& type)
{
    const auto begin = type.find('{');
    const auto end = type.find('}', begin);
    if (begin == std::string::npos || end == std::string::npos)
        return "";
    auto words = type.substr(begin + 1, end - begin - 1);
    std::replace(words.begin(), words.end(), ',', ' ');
    return words;
}

std::string GetTaken(const CLI::Option& option)
{
    if (option.get_items_expected_max() == 0)
        return "";
    const auto type = option.get_type_name();
    if (IsFileWord(type) || (option.get_positional() && IsFileWord(option.get_name(true))))
        return TakesFile;
    const auto choice = FindChoice(type);
    return choice.empty() ? TakesAnything : choice;
}

std::vector<std::string> GetNames(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const auto& name : option.get_snames())
        names.push_back("-" + name);
    for (const auto& name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

bool HasOption(const CommandWords& command, const std::vector<std::string>& names)
{
    const auto shares = [&names](const NamedOption& option)
    {
        return std::find_first_of(option.names.begin(), option.names.end(), names.begin(), names.end()) !=
               option.names.end();
    };
    return std::any_of(command.options.begin(), command.options.end(), shares);
}

// An option of the command itself hides those of the same name further up.
void AddOptions(CommandWords& command, const CLI::App& app)
{
    for (const auto* const option : app.get_options([](const CLI::Option* given) { return given->nonpositional(); }))
    {
        const auto names = GetNames(*option);
        if (!HasOption(command, names))
            command.options.push_back({names, option->get_description(), GetTaken(*option)});
    }
    if (app.get_fallthrough())
        AddOptions(command, *app.get_parent());
}

CommandWords ListWords(const CLI::App& app, const std::string& path)
{
    CommandWords command;
    command.path = path;
    AddOptions(command, app);
    for (const auto* const place : app.get_options([](const CLI::Option* given) { return given->get_positional(); }))
        command.places.push_back(GetTaken(*place));
    for (const auto* const below : app.get_subcommands({}))
        command.commands.push_back({below->get_name(), below->get_description()});
    return command;
}

void AddWords(std::vector<CommandWords>& words, const CLI::App& app, const std::string& path)
{
    words.push_back(ListWords(app, path));
    for (const auto* const below : app.get_subcommands({}))
        AddWords(words, *below, path + " " + below->get_name());
}

}  // namespace

std::vector<CommandWords> ListCommandWords(const CLI::App& program)
{
    std::vector<CommandWords> words;
    AddWords(words, program, program.get_name());
    return words;
}

}  // namespace tvx::tool
