// SPDX-License-Identifier: MIT
#include "Host/ModuleCatalog.h"

#include "Host/ModuleFile.h"
#include "Platform/Environment.h"

#include <algorithm>
#include <system_error>

namespace tvx::host
{

namespace
{

constexpr std::string_view ModuleExtension = ".tvxlib";

}  // namespace

void ModuleCatalog::Add(const std::filesystem::path& place)
{
    std::error_code failed;
    if (std::filesystem::is_directory(place, failed))
        AddFolder(place);
    else
        AddFile(place);
}

void ModuleCatalog::AddSearchPath(std::string_view list)
{
    while (!list.empty())
    {
        const auto end = std::min(list.find(Platform::SearchPathSeparator), list.size());
        if (end > 0)
            Add(std::filesystem::path(list.substr(0, end)));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
}

void ModuleCatalog::AddFolder(const std::filesystem::path& folder)
{
    std::error_code failed;
    std::vector<std::filesystem::path> files;
    std::filesystem::directory_iterator entry(folder, failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed))
    {
        if (entry->path().extension() == ModuleExtension)
            files.push_back(entry->path());
    }
    if (failed)
        problems_.push_back(
            MakeError(ErrorKind::CannotRead, DisplayName(folder) + " cannot be listed: " + failed.message()));
    std::sort(files.begin(), files.end());
    for (const auto& file : files)
        AddFile(file);
}

void ModuleCatalog::AddFile(const std::filesystem::path& file)
{
    const auto isSame = [&](const std::filesystem::path& added)
    {
        std::error_code failed;
        return added == file || std::filesystem::equivalent(added, file, failed);
    };
    if (std::any_of(files_.begin(), files_.end(), isSame))
        return;
    files_.push_back(file);
    auto document = ReadPluginDocument(file);
    if (document)
        modules_.push_back({file, std::move(*document)});
    else
        problems_.push_back(document.GetError());
}

template <class Matches>
ExportPlace ModuleCatalog::Find(Matches&& matches) const
{
    for (std::size_t module = 0; module < modules_.size(); ++module)
    {
        const auto& exports = modules_[module].document.exports;
        const auto found = std::find_if(exports.begin(), exports.end(), matches);
        if (found != exports.end())
            return {module, &*found};
    }
    return {0, nullptr};
}

ExportPlace ModuleCatalog::FindById(std::string_view id) const
{
    return Find([&](const Export& entry) { return entry.id == id; });
}

ExportPlace ModuleCatalog::FindByContract(std::string_view contract) const
{
    return Find(
        [&](const Export& entry)
        { return std::find(entry.contracts.begin(), entry.contracts.end(), contract) != entry.contracts.end(); });
}

ExportPlace ModuleCatalog::FindBySerializationId(std::string_view serid) const
{
    return Find([&](const Export& entry) { return !serid.empty() && entry.metadata.serid == serid; });
}

}  // namespace tvx::host
