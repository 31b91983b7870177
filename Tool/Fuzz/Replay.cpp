// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/Replay.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <sstream>

namespace tvx::fuzz
{

namespace
{

using Words = std::vector<std::string>;

constexpr const char NextWalkName[] = "next-walk";

Words Split(const std::string& line)
{
    std::istringstream stream(line.substr(0, line.find('#')));
    Words words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

bool ParseNumber(const std::string& word, std::uint32_t& out)
{
    const auto* const end = word.data() + word.size();
    const auto [stop, failed] = std::from_chars(word.data(), end, out);
    return failed == std::errc() && stop == end;
}

// Those of the walk, and the one that every walk has.
std::optional<std::uint32_t> FindOperation(const Walk& walk, const std::string& name)
{
    if (name == NextWalkName)
        return NextWalk.operation;
    const auto found = std::find(walk.operations.begin(), walk.operations.end(), name);
    if (found == walk.operations.end())
        return std::nullopt;
    return static_cast<std::uint32_t>(found - walk.operations.begin());
}

// What is wrong with a line, or nothing.
std::string ParseWalk(const Words& words, Replay& replay)
{
    if (words.size() != 2 || words[0] != "walk")
        return "a line \"walk NAME\" has to come first";
    replay.walk = FindWalk(words[1]);
    return replay.walk == nullptr ? "there is no walk \"" + words[1] + "\"" : "";
}

std::string ParseStep(const Words& words, Replay& replay)
{
    const auto operation = FindOperation(*replay.walk, words[0]);
    if (!operation)
        return std::string("the walk ") + replay.walk->name + " has no operation \"" + words[0] + "\"";
    Step step{*operation, 0, 0};
    if (words.size() != 3 || !ParseNumber(words[1], step.first) || !ParseNumber(words[2], step.second))
        return "two numbers below 4294967296 have to follow the operation";
    replay.steps.push_back(*operation == NextWalk.operation ? NextWalk : step);
    return "";
}

}  // namespace

std::string Describe(const Replay& replay)
{
    auto text = std::string("walk ") + replay.walk->name + "\n";
    for (const auto& step : replay.steps)
        text.append(step == NextWalk ? NextWalkName : replay.walk->operations[step.operation])
            .append(" ")
            .append(std::to_string(step.first))
            .append(" ")
            .append(std::to_string(step.second))
            .append("\n");
    return text;
}

host::Outcome<Replay> ParseReplay(std::string_view text, const std::string& origin)
{
    Replay replay{nullptr, {}};
    std::istringstream lines{std::string(text)};
    std::size_t number = 0;
    for (std::string line; std::getline(lines, line);)
    {
        ++number;
        const auto words = Split(line);
        if (words.empty())
            continue;
        const auto problem = replay.walk == nullptr ? ParseWalk(words, replay) : ParseStep(words, replay);
        if (!problem.empty())
            return host::MakeError(host::ErrorKind::BadSettings,
                                   origin + ":" + std::to_string(number) + ": " + problem);
    }
    if (replay.walk == nullptr)
        return host::MakeError(host::ErrorKind::BadSettings, origin + " holds no line \"walk NAME\"");
    return replay;
}

}  // namespace tvx::fuzz
