// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace tvx::bench
{

// Does the same once an iteration, with as many things as the row says. What it does is checked before: where the result is
// wrong, it skips with an error.
using Work = void (*)(benchmark::State& state, std::int64_t size);

// What a goal bounds.
enum class Bound
{
    Ratio,        // our time by that of the peer
    Nanoseconds,  // our time; there is no peer
    Bytes,        // as Ratio, of the counter "bytes" instead of the time
    None,         // nothing: the row is there to be known
};

// A row of the table: what we do beside who does the same, in the same run.
struct Comparison
{
    std::string name;       // "SettingsMap/GetInt"
    std::int64_t size = 0;  // how many things there are; a part of the name unless it is 0
    Work ours;
    std::string peer;       // who does the same; empty where there is nobody
    Work theirs = nullptr;  // null where there is nobody
    double goal = 0;        // at most
    Bound bound = Bound::Ratio;
    double limit = 0;  // what is held where the goal is out of reach, for a reason beside the row; else 0

    // "SettingsMap/GetInt/1000"
    std::string GetFullName() const { return size == 0 ? name : name + "/" + std::to_string(size); }
};

// Rows of the table, for a constant of a source file.
class Comparisons
{
public:
    Comparisons(const std::vector<Comparison>& rows);
    Comparisons(std::initializer_list<Comparison> rows) : Comparisons(std::vector<Comparison>(rows)) {}

    // All of the program, in the order of the source files.
    static std::vector<Comparison>& GetAll();
};

}  // namespace tvx::bench
