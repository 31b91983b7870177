// SPDX-License-Identifier: MIT
#include "Tool/CompletionScripts.h"
#include "Tool/ShellTables.h"

namespace tvx::tool
{

namespace
{

constexpr const char Head[] = R"(# Completion of tvx for bash, made by "tvx completion bash".

# What stands behind the command $1: other commands, options, and at each place what it takes.
_tvx_command()
{
    commands=() options=() places=()
    case $1 in
)";

constexpr const char Walk[] =
    R"(# Reads the words before the cursor. Bash gives an option and its value as three words where "=" stands between them.
_tvx_read()
{
    local word
    _tvx_command "$command"
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ -n $value ]]; then
            [[ $word == = ]] || value=
        elif [[ $word =~ ^[0-9]*[\<\>]+[\&\|]?$ ]]; then
            value=:file
        elif [[ -n $places_only ]]; then
            place=$((place + 1))
        elif [[ $word == -- ]]; then
            places_only=1
        elif [[ $word == --*=* ]]; then
            :
        elif [[ $word == -?* ]]; then
            _tvx_value "$command" "$word"
        elif [[ " ${commands[*]} " == *" $word "* ]]; then
            command+=" $word"
            place=0
            _tvx_command "$command"
        else
            place=$((place + 1))
        fi
    done
}

# Offers what takes says of the rest of the word, behind the part that stays as it is.
_tvx_offer()
{
    local takes=$1 part=$2 rest=$3
    case $takes in
    :any) ;;
    :file)
        compopt -o filenames -o default 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -P "$part" -- "$rest")
        ;;
    *) mapfile -t COMPREPLY < <(compgen -W "$takes" -P "$part" -- "$rest") ;;
    esac
}

_tvx()
{
    local IFS=$' \t\n' command=tvx place=0 value='' places_only='' current=${COMP_WORDS[COMP_CWORD]}
    local -a commands options places
    COMPREPLY=()
    _tvx_read
    if [[ -n $value ]]; then
        _tvx_offer "$value" '' "${current#=}"
    elif [[ -z $places_only && $current == --*=* ]]; then
        _tvx_value "$command" "${current%%=*}"
        _tvx_offer "${value:-:any}" "${current%%=*}=" "${current#*=}"
    elif [[ -z $places_only && $current == -* ]]; then
        _tvx_offer "${options[*]}" '' "$current"
    elif ((place < ${#places[@]})); then
        _tvx_offer "${places[place]}" '' "$current"
    elif [[ -z $places_only ]]; then
        _tvx_offer "${commands[*]}" '' "$current"
    fi
}

complete -F _tvx tvx
)";

ShellWords GetWords(const CommandWords& command)
{
    ShellWords words;
    for (const auto& below : command.commands)
        words.commands.push_back(below.name);
    for (const auto& option : command.options)
        words.options.insert(words.options.end(), option.names.begin(), option.names.end());
    return words;
}

}  // namespace

std::string MakeBashCompletion(const std::vector<CommandWords>& commands)
{
    return MakeShellScript(Head, &GetWords, Walk, commands);
}

}  // namespace tvx::tool
