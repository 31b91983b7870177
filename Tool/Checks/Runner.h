// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/StandardStreams.h"
#include "Tool/Checks/Plan.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tvx::check
{

struct Finding
{
    PlannedCheck planned;
    Outcome outcome;
};

struct RunOptions
{
    std::filesystem::path file;
    std::uint64_t seed = 1;
    unsigned jobs = 1;                          // how many processes at once
    std::chrono::milliseconds timeout{10'000};  // for one check
};

// Is told of each finding, in the order of the plan, on the thread that asked for the run.
using TellFinding = std::function<void(const Finding&)>;

// Runs each check in a process of its own: this program with the arguments "check --child NAME -- FILE", of which the
// standard output is what DescribeOutcome gives. Whatever a check does, its process is all that it can take with it.
// Gives what came of loading the module. Where any check needs that it is tried first, selected or not, and none of them is run
// when it does not pass; otherwise none of the module's code runs, and it counts as passed. Throws std::runtime_error when a
// process cannot be started.
Verdict RunInChildren(const std::vector<PlannedCheck>& plan, const RunOptions& options, const TellFinding& tell);

// The same in this process. There is no time limit, and a crash ends everything.
Verdict RunInThisProcess(const std::vector<PlannedCheck>& plan, const RunOptions& options,
                         const Platform::OutputDiversion& output, const TellFinding& tell);

// What comes of loading the module in a process of its own. Throws as RunInChildren.
Outcome TryToLoad(const RunOptions& options);

// An outcome as text, and back: how a child tells it. A text that is none gives a crash.
std::string DescribeOutcome(const Outcome& outcome);
Outcome ParseOutcome(const std::string& text);

const char* GetName(Verdict verdict);

}  // namespace tvx::check
