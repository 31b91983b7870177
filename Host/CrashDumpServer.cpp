// SPDX-License-Identifier: MIT
#include "Host/CrashDumpServer.h"

namespace tvx::host
{

Result CrashDumpServer::AddFile(const char* path, const char* label)
try
{
    if (path == nullptr)
        return TVX_E_POINTER;
    const std::lock_guard<std::mutex> guard(lock_);
    files_.push_back({path, label != nullptr ? label : ""});
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

std::vector<CrashDumpFile> CrashDumpServer::GetFiles() const
{
    const std::lock_guard<std::mutex> guard(lock_);
    return files_;
}

}  // namespace tvx::host
