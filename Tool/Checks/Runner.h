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

// Is told of each finding, in the order of the plan.
using TellFinding = std::function<void(const Finding&)>;

// Runs each check in a process of its own: this program with the arguments "check --child NAME -- FILE", of which the
// standard output is what DescribeOutcome gives. Whatever a check does, its process is all that it can take with it.
void RunInChildren(const std::vector<PlannedCheck>& plan, const RunOptions& options, const TellFinding& tell);

// Runs all of them in this process. There is no time limit, and a crash ends everything.
void RunInThisProcess(const std::vector<PlannedCheck>& plan, const RunOptions& options,
                      const Platform::OutputDiversion& output, const TellFinding& tell);

// An outcome as text, and back: how a child tells it. A text that is none gives a crash.
std::string DescribeOutcome(const Outcome& outcome);
Outcome ParseOutcome(const std::string& text);

const char* GetName(Verdict verdict);

}  // namespace tvx::check
