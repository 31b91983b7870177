// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace tvx::Platform
{

// How a program ended that was run as a child of this one, and what it wrote.
struct ChildRun
{
    // How it came to its end.
    enum class End
    {
        NotStarted,  // the reason says why
        Exited,      // with the code
        Killed,      // by what the reason says: it crashed
        TimedOut,    // it was ended because it took too long
        Flooded,     // it was ended because it wrote too much
    };

    End end = End::NotStarted;   // how
    int exitCode = 0;            // when it exited
    std::string reason;          // for people; empty unless it was killed or not started
    std::string output;          // what it wrote to standard output
    std::string errors;          // what it wrote to standard error
    bool leftProcesses = false;  // whether processes that it started outlived it; they were ended
};

// The most bytes that a child may write to each of its streams.
constexpr std::size_t MostOutput = 16 * 1024 * 1024;

// Runs a program to its end, without standard input. It is killed when it takes longer than the limit, and what it started is
// ended with it. Any thread, any number at once.
ChildRun RunChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  std::chrono::milliseconds limit);

// For a program that is run so: it ends when who runs it ends, and writes no file without end.
void BehaveAsChild();

}  // namespace tvx::Platform
