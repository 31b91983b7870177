// SPDX-License-Identifier: MIT
#include "Tool/CompletionScripts.h"

#include <string_view>

namespace tvx::tool
{

namespace
{

constexpr const char Walk[] =
    R"(# Offers the words that takes names, behind the part that stays as it is; for a file just says so.
function __tvx_offer --argument-names takes part
    switch $takes
        case :any
        case :file
            echo :file
        case '*'
            for word in (string split ' ' $takes)
                echo $part$word
            end
    end
end

# Reads the words before the cursor and offers what may stand there.
function __tvx_complete
    set -l command tvx
    set -l place 1
    set -l value
    set -l places_only
    set -l words (commandline -opc)
    set -e words[1]
    for word in $words
        if test -n "$value"
            set value
        else if test -n "$places_only"
            set place (math $place + 1)
        else if test "$word" = --
            set places_only 1
        else if string match -qr '^--.*=' -- $word
            continue
        else if string match -qr '^-.' -- $word
            set value (__tvx_value "$command $word")
        else if contains -- $word (__tvx_commands $command | string replace -r '\t.*' '')
            set command "$command $word"
            set place 1
        else
            set place (math $place + 1)
        end
    end

    set -l current (commandline -ct)
    set -l places (__tvx_places $command)
    if test -n "$value"
        __tvx_offer $value ''
    else if test -z "$places_only"; and string match -qr '^--.*=' -- $current
        set -l option (string replace -r '=.*' '' -- $current)
        set value (__tvx_value "$command $option")
        test -n "$value"; and __tvx_offer $value $option=
    else if test -z "$places_only"; and string match -q -- '-*' $current
        __tvx_options $command
    else if test $place -le (count $places)
        __tvx_offer $places[$place] ''
    else if test -z "$places_only"
        __tvx_commands $command
    end
end

function __tvx_takes_file
    set -l offered (__tvx_complete)
    test "$offered" = :file
end

# Files are the shell's own matter.
complete -c tvx -f
complete -c tvx -n 'not __tvx_takes_file' -a '(__tvx_complete)'
complete -c tvx -n __tvx_takes_file -F
)";

std::string Quote(std::string_view text)
{
    std::string quoted = "'";
    for (const char character : text)
    {
        if (character == '\'' || character == '\\')
            quoted += '\\';
        quoted += character;
    }
    return quoted + "'";
}

std::string MakeLine(const std::string& name, const std::string& description)
{
    return "            printf '%s\\t%s\\n' " + Quote(name) + " " + Quote(description) + "\n";
}

std::string MakeBranch(const std::string& patterns, const std::string& lines)
{
    return lines.empty() ? "" : "        case " + patterns + "\n" + lines;
}

std::string MakeFunction(const char* comment, const char* name, const std::string& branches)
{
    return std::string("# ") + comment + "\nfunction " + name + "\n    switch \"$argv[1]\"\n" + branches +
           "    end\nend\n\n";
}

std::string MakeCommands(const CommandWords& command)
{
    std::string lines;
    for (const auto& below : command.commands)
        lines += MakeLine(below.name, below.description);
    return MakeBranch(Quote(command.path), lines);
}

std::string MakeOptions(const CommandWords& command)
{
    std::string lines;
    for (const auto& option : command.options)
    {
        for (const auto& name : option.names)
            lines += MakeLine(name, option.description);
    }
    return MakeBranch(Quote(command.path), lines);
}

std::string MakePlaces(const CommandWords& command)
{
    std::string lines;
    for (const auto& takes : command.places)
        lines += "            echo " + Quote(takes) + "\n";
    return MakeBranch(Quote(command.path), lines);
}

std::string MakeValues(const CommandWords& command)
{
    std::string branches;
    for (const auto& option : command.options)
    {
        std::string patterns;
        for (const auto& name : option.names)
            patterns.append(patterns.empty() ? "" : " ").append(Quote(command.path + " " + name));
        branches += MakeBranch(patterns, option.takes.empty() ? "" : "            echo " + Quote(option.takes) + "\n");
    }
    return branches;
}

}  // namespace

std::string MakeFishCompletion(const std::vector<CommandWords>& commands)
{
    std::string below;
    std::string options;
    std::string places;
    std::string values;
    for (const auto& command : commands)
    {
        below += MakeCommands(command);
        options += MakeOptions(command);
        places += MakePlaces(command);
        values += MakeValues(command);
    }
    return "# Completion of tvx for fish, made by \"tvx completion fish\".\n\n" +
           MakeFunction("The commands behind a command.", "__tvx_commands", below) +
           MakeFunction("The options of a command.", "__tvx_options", options) +
           MakeFunction("What each place behind a command takes.", "__tvx_places", places) +
           MakeFunction("What an option takes, its command before it; nothing for a flag.", "__tvx_value", values) +
           Walk;
}

}  // namespace tvx::tool
