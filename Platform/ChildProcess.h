// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
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
    };

    End end = End::NotStarted;  // how
    int exitCode = 0;           // when it exited
    std::string reason;         // for people; empty unless it was killed or not started
    std::string output;         // what it wrote to standard output
    std::string errors;         // what it wrote to standard error
};

// Runs a program to its end, without standard input. It is killed when it takes longer than the limit. Any thread, any
// number at once.
ChildRun RunChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  std::chrono::milliseconds limit);

}  // namespace tvx::Platform
