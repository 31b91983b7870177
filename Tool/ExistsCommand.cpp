// SPDX-License-Identifier: MIT
#include "Host/ModuleFile.h"
#include "Tool/Commands.h"

#include <algorithm>
#include <memory>

namespace tvx::tool
{

namespace
{

struct ExistsOptions
{
    std::string id;
    std::string contract;
    SearchOptions search;
};

bool Fulfils(const host::Export& entry, const std::string& contract)
{
    return contract.empty() ||
           std::find(entry.contracts.begin(), entry.contracts.end(), contract) != entry.contracts.end();
}

std::string ListContracts(const host::Export& entry)
{
    std::string text;
    for (const auto& contract : entry.contracts)
        text.append(text.empty() ? "" : ", ").append(contract);
    return text;
}

void Complain(const std::string& text)
{
    Console::Complain(host::MakeOneLine(text));
}

// Modules that cannot be read are named when the export is in none of the others: it may be in them.
ExitCode DenyExport(const ExistsOptions& options, const host::ModuleCatalog& catalog)
{
    for (const auto& problem : catalog.GetProblems())
        Console::Complain(problem.message);
    Complain("no module that was found offers \"" + options.id + "\"");
    return catalog.GetProblems().empty() ? AnswerIsNo : CannotRead;
}

ExitCode TellWhetherExists(const ExistsOptions& options)
{
    const Console console;
    const auto catalog = options.search.MakeCatalog();
    const auto place = catalog.FindById(options.id);
    if (place.entry == nullptr)
        return DenyExport(options, catalog);
    const auto file = host::DisplayName(catalog.GetModules()[place.module].file);
    if (!Fulfils(*place.entry, options.contract))
    {
        Complain("\"" + options.id + "\" of " + file + " does not fulfil \"" + options.contract + "\", but " +
                 ListContracts(*place.entry));
        return AnswerIsNo;
    }
    console.Print(file + "\n");
    return Ok;
}

}  // namespace

void AddExistsCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<ExistsOptions>();
    auto* const command =
        program.add_subcommand("exists", "Tell which module offers an export, without running its code");
    command->add_option("ID", options->id, "The identifier of the export")->required();
    command->add_option("--contract", options->contract, "A contract that the export has to fulfil")
        ->type_name("CONTRACT");
    options->search.AddTo(*command);
    command->callback([options, &code] { code = TellWhetherExists(*options); });
}

}  // namespace tvx::tool
