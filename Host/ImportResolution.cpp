// SPDX-License-Identifier: MIT
#include "Host/ImportResolution.h"

#include "Helpers/ImportMessages.h"
#include "Host/LibraryManager.h"
#include "Host/ModuleFile.h"

#include <optional>

namespace tvx::host
{

namespace
{

std::string Say(const ImportMessage& message, const std::string& property)
{
    return MakeOneLine(std::string(message.before).append(property).append(message.after));
}

std::string DescribeProvider(const ModuleCatalog& catalog, const ExportPlace& place)
{
    return MakeOneLine(place.entry->id) + " of " + DisplayName(catalog.GetModules()[place.module].file);
}

std::string_view GetNameWithoutVersion(std::string_view contract)
{
    return contract.substr(0, contract.rfind('/'));
}

struct NearMiss
{
    ExportPlace place;
    std::string contract;
};

std::optional<std::string> FindNearContract(const Export& entry, const std::string& wanted)
{
    for (const auto& contract : entry.contracts)
    {
        if (entry.id == wanted || GetNameWithoutVersion(contract) == GetNameWithoutVersion(wanted))
            return contract;
    }
    return std::nullopt;
}

std::optional<NearMiss> FindNearMiss(const ModuleCatalog& catalog, const std::string& wanted)
{
    for (std::size_t module = 0; module < catalog.GetModules().size(); ++module)
    {
        for (const auto& entry : catalog.GetModules()[module].document.exports)
        {
            if (auto contract = FindNearContract(entry, wanted))
                return NearMiss{{module, &entry}, std::move(*contract)};
        }
    }
    return std::nullopt;
}

ResolvedImport Resolve(const ModuleCatalog& catalog, const Import& import)
{
    if (import.contract == LibManagerContract)
        return {&import, ImportState::Satisfied, "the host", "", ""};
    if (const auto place = catalog.FindByContract(import.contract); place.entry != nullptr)
        return {&import, ImportState::Satisfied, DescribeProvider(catalog, place), "", ""};
    if (const auto near = FindNearMiss(catalog, import.contract))
        return {&import, ImportState::WrongContract, DescribeProvider(catalog, near->place),
                Say(NoLibraryObject, import.property), near->contract};
    return {&import, import.optional ? ImportState::OptionalMissing : ImportState::RequiredMissing, "",
            Say(NoProxy, import.property), ""};
}

}  // namespace

std::vector<ResolvedExport> ResolveImports(const ModuleCatalog& catalog, std::size_t module)
{
    std::vector<ResolvedExport> resolved;
    for (const auto& entry : catalog.GetModules()[module].document.exports)
    {
        auto& added = resolved.emplace_back(ResolvedExport{&entry, {}});
        for (const auto& import : entry.imports)
            added.imports.push_back(Resolve(catalog, import));
    }
    return resolved;
}

}  // namespace tvx::host
