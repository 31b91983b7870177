// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Fuzz/Explain.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

namespace tvx::fuzz
{

struct Options
{
    std::filesystem::path file;
    std::chrono::seconds duration{10};
    std::uint64_t seed = 1;
    unsigned jobs = 1;              // how many processes at once
    std::filesystem::path scratch;  // a folder for files that come and go
};

// Is told of each finding when it is made, on any thread, one after the other.
using TellFinding = std::function<void(const Finding& finding)>;

// Random walks over everything that the module offers, in processes of their own, until the time is over; making a finding
// short goes on beyond that. A sort of walks that found something is not gone again. Which walks follow each other within a
// sort is decided by the seed alone. Gives how many there were.
// Throws std::runtime_error for what is no fault of the module, and what telling throws.
std::uint64_t Fuzz(const Options& options, const std::vector<const Walk*>& walks, const TellFinding& tell);

}  // namespace tvx::fuzz
