// SPDX-License-Identifier: MIT
#include "Tool/CompletionScripts.h"
#include "Tool/ShellTables.h"

namespace tvx::tool
{

namespace
{

constexpr const char Head[] = R"(#compdef tvx
# Completion of tvx for zsh, made by "tvx completion zsh"; goes as _tvx into a folder of fpath.

# What stands behind the command $1: other commands, options, and at each place what it takes.
_tvx_command()
{
    commands=() options=() places=()
    case $1 in
)";

constexpr const char Walk[] = R"(# Reads the words before the cursor.
_tvx_read()
{
    local word
    _tvx_command "$command"
    for word in "${(@Q)words[2,CURRENT - 1]}"; do
        if [[ -n $value ]]; then
            value=
        elif [[ -n $places_only ]]; then
            place=$((place + 1))
        elif [[ $word == -- ]]; then
            places_only=1
        elif [[ $word == --*=* ]]; then
            :
        elif [[ $word == -?* ]]; then
            _tvx_value "$command" "$word"
        elif ((${commands[(I)${(b)word}:*]})); then
            command+=" $word"
            place=1
            _tvx_command "$command"
        else
            place=$((place + 1))
        fi
    done
}

_tvx_offer()
{
    case $1 in
    :any) _message 'a value' ;;
    :file) _files ;;
    *) compadd -- ${=1} ;;
    esac
}

_tvx()
{
    local command=tvx value='' places_only=''
    local -i place=1
    local -a commands options places
    _tvx_read
    if [[ -n $value ]]; then
        _tvx_offer "$value"
    elif [[ -z $places_only && $PREFIX == --*=* ]]; then
        _tvx_value "$command" "${PREFIX%%=*}"
        compset -P 1 '*='
        _tvx_offer "${value:-:any}"
    elif [[ -z $places_only && $PREFIX == -* ]]; then
        _describe -o option options
    elif ((place <= ${#places})); then
        _tvx_offer "${places[place]}"
    elif [[ -z $places_only ]] && ((${#commands})); then
        _describe command commands
    fi
}

# The file is read either as the function itself, from fpath, or by a person's own start files.
if [[ ${funcstack[1]} == _tvx ]]; then
    _tvx "$@"
else
    compdef _tvx tvx
fi
)";

// What _describe shows: a backslash means something to it.
std::string Describe(const std::string& name, const std::string& description)
{
    auto element = name + ":";
    for (const char character : description)
        element += character == '\\' ? std::string("\\\\") : std::string(1, character);
    return element;
}

ShellWords GetWords(const CommandWords& command)
{
    ShellWords words;
    for (const auto& below : command.commands)
        words.commands.push_back(Describe(below.name, below.description));
    for (const auto& option : command.options)
    {
        for (const auto& name : option.names)
            words.options.push_back(Describe(name, option.description));
    }
    return words;
}

}  // namespace

std::string MakeZshCompletion(const std::vector<CommandWords>& commands)
{
    return MakeShellScript(Head, &GetWords, Walk, commands);
}

}  // namespace tvx::tool
