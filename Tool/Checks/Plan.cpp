// SPDX-License-Identifier: MIT
#include "Tool/Checks/Plan.h"

#include <algorithm>

namespace tvx::check
{

namespace
{

bool IsMeant(const std::vector<std::string>& patterns, const PlannedCheck& planned)
{
    return std::any_of(patterns.begin(), patterns.end(),
                       [&](const std::string& pattern) {
                           return MatchesPattern(pattern, planned.check->name) ||
                                  MatchesPattern(pattern, planned.family->name);
                       });
}

bool IsSelected(const Selection& selection, const PlannedCheck& planned)
{
    return (selection.only.empty() || IsMeant(selection.only, planned)) && !IsMeant(selection.exclude, planned);
}

}  // namespace

bool MatchesPattern(std::string_view pattern, std::string_view text)
{
    // Where to go on when the characters behind the latest star turn out not to match.
    auto star = std::string_view::npos;
    std::size_t starText = 0;
    std::size_t place = 0;
    std::size_t at = 0;
    while (at < text.size())
    {
        if (place < pattern.size() && (pattern[place] == '?' || pattern[place] == text[at]) && pattern[place] != '*')
        {
            ++place;
            ++at;
        }
        else if (place < pattern.size() && pattern[place] == '*')
        {
            star = place++;
            starText = at;
        }
        else if (star != std::string_view::npos)
        {
            place = star + 1;
            at = ++starText;
        }
        else
            return false;
    }
    return pattern.find_first_not_of('*', place) == std::string_view::npos;
}

std::vector<PlannedCheck> MakePlan(std::span<const Family* const> families, const Selection& selection)
{
    std::vector<PlannedCheck> plan;
    for (const auto* const family : families)
    {
        for (const auto& check : family->checks)
        {
            if (IsSelected(selection, {family, &check}))
                plan.push_back({family, &check});
        }
    }
    return plan;
}

}  // namespace tvx::check
