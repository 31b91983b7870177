// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/Walk.h"

#include <algorithm>
#include <array>

namespace tvx::fuzz
{

namespace
{

constexpr std::array Walks = {&StringWalk,     &VariantWalk,      &SettingsMapWalk, &UserDataWalk, &MapWalk,
                              &CollectionWalk, &VariantArrayWalk, &ImageWalk,       &LoggerWalk};

constexpr std::size_t StepsBetweenComparisons = 32;

void FollowOne(const Walk& walk, std::span<const Step> steps, check::Trial& trial)
{
    const auto walker = walk.start(trial);
    std::size_t done = 0;
    for (const auto& step : steps)
    {
        walker->Do(step);
        if (++done % StepsBetweenComparisons == 0)
            walker->Compare();
    }
    walker->Compare();
    trial.ExpectSilence("the walk");
}

}  // namespace

std::span<const Walk* const> GetWalks()
{
    return Walks;
}

const Walk* FindWalk(std::string_view name)
{
    const auto found = std::find_if(Walks.begin(), Walks.end(), [&](const Walk* walk) { return walk->name == name; });
    return found == Walks.end() ? nullptr : *found;
}

std::vector<Step> MakeSteps(const Walk& walk, check::Random& random, std::size_t count)
{
    std::vector<Step> steps;
    for (std::size_t step = 0; step < count; ++step)
    {
        const auto operation = random.Below(static_cast<std::uint32_t>(walk.operations.size()));
        const auto first = static_cast<std::uint32_t>(random.Next());
        steps.push_back({operation, first, static_cast<std::uint32_t>(random.Next())});
    }
    return steps;
}

void Follow(const Walk& walk, std::span<const Step> steps, check::Trial& trial)
{
    for (;;)
    {
        const auto end = std::find(steps.begin(), steps.end(), NextWalk);
        FollowOne(walk, {steps.begin(), end}, trial);
        if (end == steps.end())
            return;
        steps = {end + 1, steps.end()};
    }
}

}  // namespace tvx::fuzz
