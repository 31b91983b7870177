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

void MakeZero(Replay& replay, std::uint32_t Step::*number, const StillFails& stillFails)
{
    for (std::size_t step = 0; step < replay.steps.size(); ++step)
    {
        if (replay.steps[step].*number == 0)
            continue;
        auto simpler = replay;
        simpler.steps[step].*number = 0;
        if (stillFails(simpler))
            replay = std::move(simpler);
    }
}

}  // namespace

Replay Shrink(Replay replay, const StillFails& stillFails)
{
    for (auto size = std::max<std::size_t>(replay.steps.size() / 2, 1);; size = std::max<std::size_t>(size / 2, 1))
    {
        const bool shrunk = LeaveOutParts(replay, size, stillFails);
        if (size == 1 && !shrunk)
            break;
    }
    MakeZero(replay, &Step::first, stillFails);
    MakeZero(replay, &Step::second, stillFails);
    return replay;
}

}  // namespace tvx::fuzz
