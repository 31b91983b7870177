// SPDX-License-Identifier: MIT
#include "Host/ImportResolution.h"

#include "Helpers/ImportMessages.h"
#include "Host/LibraryManager.h"
#include "Host/ModuleFile.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

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

// What the manager fetches for a contract: it remembers the identifier of what fulfils it, not the module.
ExportPlace FindProvider(const ModuleCatalog& catalog, const std::string& contract)
{
    const auto place = catalog.FindByContract(contract);
    return place.entry == nullptr ? place : catalog.FindById(place.entry->id);
}

bool IsOfHost(const Import& import)
{
    return import.contract == LibManagerContract;
}

// The import for whose sake an export cannot be had; null when it can.
const Import* FindHindrance(const ModuleCatalog& catalog, const Export& entry)
{
    const auto isHindrance = [&](const Import& import)
    { return !import.optional && !IsOfHost(import) && catalog.FindByContract(import.contract).entry == nullptr; };
    const auto found = std::find_if(entry.imports.begin(), entry.imports.end(), isHindrance);
    return found == entry.imports.end() ? nullptr : &*found;
}

// Looks through the required imports of an export that can be had, of the exports that fulfil those, and so on, each once:
// exports may import each other. The nearest comes first.
class SearchBelow
{
public:
    SearchBelow(const ModuleCatalog& catalog, const ExportPlace& place) : catalog_(catalog) { Add(place); }

    // The first import whose provider cannot be had, and why; empty when all can.
    std::vector<MissingImport> Find()
    {
        for (std::size_t next = 0; next < places_.size(); ++next)
        {
            auto missing = FindAt(places_[next]);
            if (!missing.empty())
                return missing;
        }
        return {};
    }

private:
    std::vector<MissingImport> FindAt(const ExportPlace place)
    {
        for (const auto& import : place.entry->imports)
        {
            if (import.optional || IsOfHost(import))
                continue;
            const auto provider = FindProvider(catalog_, import.contract);
            if (const auto* const hindrance = FindHindrance(catalog_, *provider.entry))
                return {{DescribeProvider(catalog_, place), &import},
                        {DescribeProvider(catalog_, provider), hindrance}};
            Add(provider);
        }
        return {};
    }

    void Add(const ExportPlace& place)
    {
        if (seen_.insert(place.entry).second)
            places_.push_back(place);
    }

    const ModuleCatalog& catalog_;
    std::set<const Export*> seen_;
    std::vector<ExportPlace> places_;
};

// Of an import that somebody fulfils. The export that asks is there in any case: it has a proxy for this one, which gives
// nothing when the provider cannot be had.
ResolvedImport ResolveBy(const ModuleCatalog& catalog, const Import& import, const ExportPlace& place)
{
    ResolvedImport resolved{.import = &import, .provider = DescribeProvider(catalog, place)};
    if (const auto* const hindrance = FindHindrance(catalog, *place.entry))
    {
        resolved.state = ImportState::ProviderMissing;
        resolved.message = Say(NoLibraryObject, import.property);
        resolved.missing = {{resolved.provider, hindrance}};
        return resolved;
    }
    resolved.missing = SearchBelow(catalog, place).Find();
    return resolved;
}

// Of an import that nobody fulfils: the manager sets nothing under its name.
ResolvedImport ResolveByNobody(const ModuleCatalog& catalog, const Import& import)
{
    ResolvedImport resolved{.import = &import, .message = Say(NoProxy, import.property)};
    const auto near = FindNearMiss(catalog, import.contract);
    if (!near)
    {
        resolved.state = import.optional ? ImportState::OptionalMissing : ImportState::RequiredMissing;
        return resolved;
    }
    resolved.state = ImportState::WrongContract;
    resolved.provider = DescribeProvider(catalog, near->place);
    resolved.offeredContract = near->contract;
    return resolved;
}

ResolvedImport Resolve(const ModuleCatalog& catalog, const Import& import)
{
    if (IsOfHost(import))
        return {.import = &import, .provider = "the host"};
    const auto place = FindProvider(catalog, import.contract);
    return place.entry == nullptr ? ResolveByNobody(catalog, import) : ResolveBy(catalog, import, place);
}

}  // namespace

bool IsRequiredAndMissing(const ResolvedImport& resolved)
{
    return !resolved.import->optional && resolved.state != ImportState::Satisfied;
}

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
