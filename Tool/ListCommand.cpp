// SPDX-License-Identifier: MIT
#include "Tool/Commands.h"
#include "Tool/DocumentPrinter.h"

#include <memory>

namespace tvx::tool
{

namespace
{

struct ListOptions
{
    SearchOptions search;
    bool json = false;
};

void PrintList(const Console& console, const host::ModuleCatalog& catalog)
{
    for (const auto& module : catalog.GetModules())
        console.Print(DescribeModule(module));
}

void PrintListAsJson(const Console& console, const host::ModuleCatalog& catalog)
{
    auto modules = nlohmann::ordered_json::array();
    for (const auto& module : catalog.GetModules())
        modules.push_back(ModuleToJson(module));
    auto problems = nlohmann::ordered_json::array();
    for (const auto& problem : catalog.GetProblems())
        problems.push_back(problem.message);
    console.Print(PrintJson({{"modules", modules}, {"problems", problems}}));
}

// What can be read is listed, whatever else cannot.
ExitCode List(const ListOptions& options)
{
    const Console console;
    const auto catalog = options.search.MakeCatalog();
    if (options.json)
        PrintListAsJson(console, catalog);
    else
        PrintList(console, catalog);
    for (const auto& problem : catalog.GetProblems())
        console.Complain(problem.message);
    return catalog.GetProblems().empty() ? Ok : CannotRead;
}

}  // namespace

void AddListCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<ListOptions>();
    auto* const command =
        program.add_subcommand("list", "List the modules found with their exports, contracts and imports");
    options->search.AddTo(*command);
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, &code] { code = List(*options); });
}

}  // namespace tvx::tool
