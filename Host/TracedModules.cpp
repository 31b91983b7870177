// SPDX-License-Identifier: MIT
#include "Host/TracedModules.h"

#include "Platform/AddressOrigin.h"

#include <algorithm>
#include <system_error>

namespace tvx::host
{

std::filesystem::path MakeCanonical(const std::filesystem::path& file)
{
    std::error_code failed;
    auto canonical = std::filesystem::weakly_canonical(file, failed);
    return failed ? file : canonical;
}

void TracedModules::Add(const std::filesystem::path& file)
{
    auto canonical = MakeCanonical(file);
    const std::lock_guard<std::mutex> guard(lock_);
    const auto isMeant = [&](const TracedModule& module) { return module.file == canonical; };
    if (std::any_of(modules_.begin(), modules_.end(), isMeant))
        return;
    modules_.push_back({canonical, canonical.filename().string()});
    std::erase_if(origins_, [](const auto& known) { return known.second == nullptr; });
}

// The system is asked without the lock: it has one of its own, which it holds while the start code of a module runs.
const TracedModule* TracedModules::Find(const void* table) const
{
    const auto origin = Platform::GetAddressOrigin(table);
    const std::lock_guard<std::mutex> guard(lock_);
    const auto known = origins_.find(origin);
    if (known != origins_.end())
        return known->second;
    const auto isMeant = [file = MakeCanonical(origin)](const TracedModule& module) { return module.file == file; };
    const auto found = std::find_if(modules_.begin(), modules_.end(), isMeant);
    const auto* const module = found == modules_.end() ? nullptr : &*found;
    origins_.emplace(origin, module);
    return module;
}

}  // namespace tvx::host
