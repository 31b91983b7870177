// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/ILibManager.h"

#include <mutex>
#include <string>
#include <vector>

namespace tvx::host
{

// A file that a crash report takes along.
struct CrashDumpFile
{
    std::string path;   // as it was added
    std::string label;  // what the file is, for a reader of the report
};

// Keeps the list of files for whoever makes the report. Any thread.
class CrashDumpServer final : public ClassImpl<CrashDumpServer, ICrashDumpServer>
{
public:
    using Interfaces = InterfaceList<ICrashDumpServer, IObject, IObjectBase>;

    // Each call adds an entry, also for a path that has one. A null label is empty.
    // Fails: -4 when path is null or memory is exhausted.
    Result AddFile(const char* path, const char* label) override;

    // In the order in which they were added.
    std::vector<CrashDumpFile> GetFiles() const;

private:
    mutable std::mutex lock_;
    std::vector<CrashDumpFile> files_;
};

}  // namespace tvx::host
