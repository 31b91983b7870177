// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IString.h"

namespace tvx
{

// A host's manager of modules, as far as modules see it.
class ILibManager : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ILibManager/1.0";

    // Slot 11. Gives a text that lists the installed plug-ins with their versions.
    //   out  receives one reference to a new string, owned by the caller
    // Threads: one at a time. Fails: as the host says.
    virtual Result GetInstalledPluginsVersions(IString** out) = 0;

protected:
    ~ILibManager() = default;
};

// A host's collector of what is worth sending along when the process crashes.
class ICrashDumpServer : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ICrashDumpServer/1.0";

    // Slot 11. Adds a file to what a crash report takes along.
    //   path   borrowed
    //   label  borrowed; what the file is, for a reader of the report
    // Threads: one at a time. Fails: as the host says.
    virtual Result AddFile(const char* path, const char* label) = 0;

protected:
    ~ICrashDumpServer() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::ILibManager::Id[];
[[gnu::weak]] constexpr const char tvx::ICrashDumpServer::Id[];
#endif
