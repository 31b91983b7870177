// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/Shrink.h"

#include <algorithm>

namespace tvx::fuzz
{

namespace
{

Replay Without(const Replay& replay, std::size_t begin, std::size_t count)
{
    auto shorter = replay;
    const auto first = shorter.steps.begin() + static_cast<std::ptrdiff_t>(begin);
    shorter.steps.erase(first, first + static_cast<std::ptrdiff_t>(count));
    return shorter;
}

// Leaves out as many parts of one size as can be; from the end on, since the last steps often only follow the finding.
bool LeaveOutParts(Replay& replay, std::size_t size, const StillFails& stillFails)
{
    bool shrunk = false;
    for (auto end = replay.steps.size(); end > 0;)
    {
        const auto count = std::min(size, end);
        end -= count;
        auto shorter = Without(replay, end, count);
        if (!stillFails(shorter))
            continue;
        replay = std::move(shorter);
        shrunk = true;
    }
    return shrunk;
}

// Most operations take a number modulo how many things they choose from, so that a small one mostly means the same. From the
// simplest on.
std::vector<std::uint32_t> GetSimpler(std::uint32_t number)
{
    constexpr std::uint32_t small = 16;
    std::vector<std::uint32_t> simpler;
    for (std::uint32_t candidate = 0; candidate < std::min(number, small); ++candidate)
        simpler.push_back(candidate);
    for (const std::uint32_t modulus : {0x100u, 0x10000u})
    {
        if (const auto rest = number % modulus; rest >= small && rest < number)
            simpler.push_back(rest);
    }
    return simpler;
}

bool MakeSmaller(Replay& replay, std::size_t step, std::uint32_t Step::*number, const StillFails& stillFails)
{
    for (const auto candidate : GetSimpler(replay.steps[step].*number))
    {
        auto simpler = replay;
        simpler.steps[step].*number = candidate;
        if (!stillFails(simpler))
            continue;
        replay = std::move(simpler);
        return true;
    }
    return false;
}

bool MakeNumbersSmaller(Replay& replay, const StillFails& stillFails)
{
    bool shrunk = false;
    for (std::size_t step = 0; step < replay.steps.size(); ++step)
    {
        if (replay.steps[step] == NextWalk)
            continue;
        shrunk = MakeSmaller(replay, step, &Step::first, stillFails) || shrunk;
        shrunk = MakeSmaller(replay, step, &Step::second, stillFails) || shrunk;
    }
    return shrunk;
}

void LeaveOutSteps(Replay& replay, const StillFails& stillFails)
{
    for (auto size = std::max<std::size_t>(replay.steps.size() / 2, 1);; size = std::max<std::size_t>(size / 2, 1))
    {
        const bool shrunk = LeaveOutParts(replay, size, stillFails);
        if (size == 1 && !shrunk)
            return;
    }
}

}  // namespace

Replay Shrink(Replay replay, const StillFails& stillFails)
{
    do
        LeaveOutSteps(replay, stillFails);
    while (MakeNumbersSmaller(replay, stillFails));
    return replay;
}

}  // namespace tvx::fuzz
