// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>

namespace tvx::host
{

// A module whose objects are traced.
struct TracedModule
{
    std::filesystem::path file;  // without links and dots
    std::string name;
};

// Tells the objects of modules from those of the host program, by the file that their class is mapped from. Any thread.
class TracedModules
{
public:
    void Add(const std::filesystem::path& file);

    // The module that the table of a class lies in; null for the host program, its libraries, and what is mapped no
    // more. It stays where it is.
    const TracedModule* Find(const void* table) const;

private:
    mutable std::mutex lock_;
    std::deque<TracedModule> modules_;
    mutable std::map<std::string, const TracedModule*> origins_;  // what is known of the system's names for files
};

// A name for a file that does not depend on how it was come to.
std::filesystem::path MakeCanonical(const std::filesystem::path& file);

}  // namespace tvx::host
