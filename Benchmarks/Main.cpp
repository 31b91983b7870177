// SPDX-License-Identifier: MIT
#include "Benchmarks/LoadedModule.h"
#include "Benchmarks/SecondThread.h"
#include "Benchmarks/Table.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <regex>

namespace tvx::bench
{

namespace
{

struct Options
{
    std::string filter = ".";
    std::string results;
    std::vector<std::string> notes;
    bool gate = false;
};

// Where it was measured stands above the table.
std::string DescribeAll(const Options& options, const std::vector<Measurement>& measured)
{
    std::string text = "# Results\n\n";
    for (const auto& note : options.notes)
        text += "- " + note + "\n";
    text += "\n" + GetHead();
    for (const auto& measurement : measured)
        text += Describe(measurement);
    return text;
}

std::vector<Measurement> MeasureAll(const std::regex& filter)
{
    std::vector<Measurement> measured;
    // Loaded now, so that what it writes then stands above the table.
    const auto module = GetExport<IObjectBase>("com.talvere.general.tvx.GenericStringImplementation/1.0");
    std::cout << GetHead() << std::flush;
    for (const auto& row : Comparisons::GetAll())
    {
        if (!std::regex_search(row.GetFullName(), filter))
            continue;
        measured.push_back(Measure(row));
        std::cout << Describe(measured.back()) << std::flush;
    }
    return measured;
}

// Other work on the machine may be to blame for what is missed, so it is measured again when all else is done: it is missed
// when it is missed every time.
void MeasureMissedAgain(std::vector<Measurement>& measured)
{
    constexpr int rounds = 3;
    for (int round = 0; round < rounds; ++round)
    {
        for (auto& measurement : measured)
        {
            if (!measurement.IsLimitMissed() || !measurement.error.empty())
                continue;
            measurement = Measure(measurement.row);
            std::cout << "again:\n" << Describe(measurement) << std::flush;
        }
    }
}

int Complain(const std::string& what)
{
    std::cerr << "tvx-bench: " << what << '\n';
    return 2;
}

std::ptrdiff_t Count(const std::vector<Measurement>& measured, bool (Measurement::*is)() const)
{
    return std::count_if(measured.begin(), measured.end(), [is](const Measurement& row) { return (row.*is)(); });
}

int Run(const Options& options)
{
    const SecondThread thread;
    auto measured = MeasureAll(std::regex(options.filter));
    if (measured.empty())
        return Complain("no benchmark has a name with '" + options.filter + "'");
    MeasureMissedAgain(measured);
    if (!options.results.empty() && !(std::ofstream(options.results) << DescribeAll(options, measured)))
        return Complain(options.results + " cannot be written");
    const auto held = Count(measured, &Measurement::IsGoalMissed);
    const auto missed = Count(measured, &Measurement::IsLimitMissed);
    std::cout << measured.size() << " rows, " << held - missed << " held short of their goal, " << missed
              << " missed\n";
    return options.gate && missed > 0 ? 1 : 0;
}

// The library takes its settings from a command line only.
void SetUpLibrary(const char* program)
{
    std::vector<std::string> words = {program, "--benchmark_repetitions=9", "--benchmark_min_time=0.03",
                                      "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> arguments;
    std::transform(words.begin(), words.end(), std::back_inserter(arguments),
                   [](std::string& word) { return word.data(); });
    auto count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
}

}  // namespace

}  // namespace tvx::bench

int main(int count, char** arguments)
try
{
    tvx::bench::Options options;
    CLI::App program("Measures the module beside its peers", "tvx-bench");
    program.add_option("FILTER", options.filter, "Measure the rows whose names match this regular expression");
    program.add_flag("--gate", options.gate, "End with 1 when a row is above its limit");
    program.add_option("--results", options.results, "Write the table to this file, too");
    program.add_option("--note", options.notes, "A line that stands above the table in the file");
    CLI11_PARSE(program, count, arguments);
    tvx::bench::SetUpLibrary(*arguments);
    return tvx::bench::Run(options);
}
catch (const std::exception& failure)
{
    return tvx::bench::Complain(failure.what());
}
