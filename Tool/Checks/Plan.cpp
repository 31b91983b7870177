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
        const char wanted = place < pattern.size() ? pattern[place] : '\0';
        if (wanted == '*')
        {
            star = place++;
            starText = at;
            continue;
        }
        if (place < pattern.size() && (wanted == '?' || wanted == text[at]))
        {
            ++place;
            ++at;
            continue;
        }
        if (star == std::string_view::npos)
            return false;
        place = star + 1;
        at = ++starText;
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
