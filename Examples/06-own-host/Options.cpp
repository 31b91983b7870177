// SPDX-License-Identifier: MIT
#include "Options.h"

#include <iostream>
#include <string_view>

namespace
{

std::optional<Options> Refuse()
{
    std::cerr << "usage: own-host [--trace-lives] [--config FILE] [PLACE]...\n";
    return std::nullopt;
}

}  // namespace

std::optional<Options> ReadOptions(int count, char** arguments)
{
    Options options;
    for (int index = 1; index < count; ++index)
    {
        const std::string_view argument = arguments[index];
        if (argument == "--trace-lives")
            options.traceLives = true;
        else if (argument == "--config" && index + 1 < count)
            options.configuration = arguments[++index];
        else if (argument.starts_with("-"))
            return Refuse();
        else
            options.places.emplace_back(argument);
    }
    return options;
}
