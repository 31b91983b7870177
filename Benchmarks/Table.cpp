// SPDX-License-Identifier: MIT
#include "Benchmarks/Table.h"

#include <fmt/format.h>

namespace tvx::bench
{

namespace
{

constexpr const char Line[] = "| {:<44} | {:>9} | {:<46} | {:>9} | {:>6} | {:>6} | {:>6} | {:>6} | {:<6} |\n";

std::string ShowTime(double nanoseconds)
{
    if (nanoseconds < 1e3)
        return fmt::format("{:.1f} ns", nanoseconds);
    if (nanoseconds < 1e6)
        return fmt::format("{:.1f} µs", nanoseconds / 1e3);
    return fmt::format("{:.2f} ms", nanoseconds / 1e6);
}

std::string ShowFigure(const Comparison& row, double figure)
{
    if (figure <= 0)
        return "";
    return row.bound == Bound::Bytes ? fmt::format("{:.1f} B", figure) : ShowTime(figure);
}

std::string ShowRatio(double ratio)
{
    return ratio > 0 ? fmt::format("{:.3f}", ratio) : "";
}

std::string ShowBound(const Comparison& row, double bound)
{
    switch (row.bound)
    {
    case Bound::None: return "";
    case Bound::Nanoseconds: return fmt::format("{:g} ns", bound);
    case Bound::Ratio:
    case Bound::Bytes: break;
    }
    return fmt::format("{:g}", bound);
}

std::string ShowVerdict(const Measurement& measured)
{
    if (measured.row.bound == Bound::None)
        return "";
    if (measured.IsLimitMissed())
        return "missed";
    return measured.IsGoalMissed() ? "held" : "met";
}

}  // namespace

std::string GetHead()
{
    return fmt::format(Line, "operation", "ours", "peer", "theirs", "ratio", "best", "goal", "limit", "") +
           fmt::format(Line, "---", "--:", "---", "--:", "--:", "--:", "--:", "--:", "---");
}

std::string Describe(const Measurement& measured)
{
    const auto& row = measured.row;
    if (!measured.error.empty())
        return fmt::format("| {} | {} |\n", row.GetFullName(), measured.error);
    return fmt::format(Line, row.GetFullName(), ShowFigure(row, measured.ours.median), row.peer,
                       ShowFigure(row, measured.theirs.median), ShowRatio(measured.GetRatio()),
                       ShowRatio(measured.GetBestRatio()), ShowBound(row, row.goal),
                       ShowBound(row, measured.GetLimit()), ShowVerdict(measured));
}

}  // namespace tvx::bench
