// SPDX-License-Identifier: MIT
#include "Benchmarks/Measurement.h"

#include <algorithm>
#include <string_view>

namespace tvx::bench
{

namespace
{

constexpr const char Peer[] = "/peer";

// Collects what each repetition came to instead of printing it.
class Collector final : public benchmark::BenchmarkReporter
{
public:
    explicit Collector(const Comparison& row) : row_(row) {}

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const auto& run : runs)
        {
            if (run.error_occurred)
                error_ = run.error_message;
            else if (run.run_type == Run::RT_Iteration)
                Add(run);
        }
    }

    const std::string& GetError() const { return error_; }
    Figures GetOurs() const { return Sum(ours_); }
    Figures GetTheirs() const { return Sum(theirs_); }

private:
    void Add(const Run& run)
    {
        const bool isPeer = std::string_view(run.run_name.function_name).ends_with(Peer);
        (isPeer ? theirs_ : ours_).push_back(GetFigure(run));
    }

    double GetFigure(const Run& run) const
    {
        if (row_.bound == Bound::Bytes)
            return run.counters.at("bytes").value;
        return run.real_accumulated_time * 1e9 / static_cast<double>(run.iterations);
    }

    static Figures Sum(std::vector<double> figures)
    {
        if (figures.empty())
            return {};
        std::sort(figures.begin(), figures.end());
        return {figures[figures.size() / 2], figures.front()};
    }

    const Comparison& row_;
    std::string error_;
    std::vector<double> ours_;
    std::vector<double> theirs_;
};

void Register(const std::string& name, Work work, std::int64_t size)
{
    benchmark::RegisterBenchmark(name.c_str(), [work, size](benchmark::State& state) { work(state, size); });
}

}  // namespace

double Measurement::GetRatio() const
{
    return theirs.median > 0 ? ours.median / theirs.median : 0;
}

double Measurement::GetBestRatio() const
{
    return theirs.best > 0 ? ours.best / theirs.best : 0;
}

double Measurement::GetLimit() const
{
    return row.limit > 0 ? row.limit : row.goal;
}

bool Measurement::IsGoalMissed() const
{
    return !error.empty() || IsAbove(row.goal);
}

bool Measurement::IsLimitMissed() const
{
    return !error.empty() || IsAbove(GetLimit());
}

bool Measurement::IsAbove(double bound) const
{
    switch (row.bound)
    {
    case Bound::None: return false;
    case Bound::Nanoseconds: return ours.median > bound && ours.best > bound;
    case Bound::Ratio:
    case Bound::Bytes: break;
    }
    return GetRatio() > bound && GetBestRatio() > bound;
}

Measurement Measure(const Comparison& row)
{
    const auto name = row.GetFullName();
    benchmark::ClearRegisteredBenchmarks();
    Register(name, row.ours, row.size);
    if (row.theirs != nullptr)
        Register(name + Peer, row.theirs, row.size);
    Collector collector(row);
    benchmark::RunSpecifiedBenchmarks(&collector);
    return {row, collector.GetOurs(), collector.GetTheirs(), collector.GetError()};
}

}  // namespace tvx::bench
