// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

namespace tvx::check
{

class Trial;

// What has to be there before a check can begin.
enum class Needs
{
    File,     // the module's file: none of its code runs
    Loading,  // a file that the system loads; the check does so itself
    Module,   // the module, loaded
};

// One promise of a module, tried out. The name is for people's lists of what to run and to leave out: it never changes.
struct Check
{
    const char* name;         // words in small letters with dashes between them
    const char* description;  // what is tried, as a sentence
    const char* rule;         // what has to hold, as a sentence
    void (*run)(Trial& trial);
};

// Checks that belong together. Those of an export run where the module offers it, the others on every module.
struct Family
{
    const char* name;      // as a check's
    const char* exportId;  // null for any module
    Needs needs;           // the same for all of them
    std::span<const Check> checks;
};

// What a check found out. A new verdict goes to the end.
enum class Verdict
{
    Passed,
    Failed,
    Crashed,  // it took its process with it, or did not end in time
    Skipped,  // it could not be tried
    Warning,  // the module works but should be looked at
};

struct Outcome
{
    Verdict verdict = Verdict::Passed;
    std::string message;  // what was expected and what came, as one line
    double seconds = 0;
};

}  // namespace tvx::check
