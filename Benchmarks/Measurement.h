// SPDX-License-Identifier: MIT
#pragma once

#include "Benchmarks/Comparison.h"

#include <string>
#include <vector>

namespace tvx::bench
{

// One side of a row: nanoseconds an iteration, or bytes.
struct Figures
{
    double median = 0;
    double best = 0;
};

// What a row came to.
struct Measurement
{
    Comparison row;
    Figures ours;
    Figures theirs;
    std::string error;  // why there are no figures; else empty

    // By the median and by the best of the repetitions; 0 without a peer.
    double GetRatio() const;
    double GetBestRatio() const;

    // What must be held: the limit of the row, which is mostly its goal. In the unit of the goal; 0 without a goal.
    double GetLimit() const;

    // By the median and by the best, so that a single disturbance misses nothing; or not measured at all.
    bool IsGoalMissed() const;
    bool IsLimitMissed() const;

private:
    bool IsAbove(double bound) const;
};

// Repeats both sides of a row in turn, in an order that changes.
Measurement Measure(const Comparison& row);

}  // namespace tvx::bench
