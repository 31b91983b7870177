// SPDX-License-Identifier: MIT
#include "Host/ExportedSymbols.h"
#include "Host/ModuleFile.h"
#include "Host/PluginDocument.h"
#include "Tool/Commands.h"
#include "Tool/DocumentPrinter.h"
#include "Tool/ProbeInChild.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <set>

namespace tvx::tool
{

namespace
{

using Json = nlohmann::ordered_json;

// Everything that users of a module may rely on, a line each: comparing modules is comparing these.
using Facts = std::set<std::string>;

struct DiffOptions
{
    std::string before;
    std::string after;
    bool json = false;
    unsigned timeout = 10;  // seconds
};

void AddMetadata(Facts& facts, const std::string& place, const host::Metadata& metadata)
{
    const std::pair<const char*, const std::string&> entries[] = {{"name", metadata.name},
                                                                  {"subname", metadata.subname},
                                                                  {"copyright", metadata.copyright},
                                                                  {"format", metadata.serid}};
    for (const auto& [name, text] : entries)
    {
        if (!text.empty())
            facts.insert(place + " " + name + " " + text);
    }
}

void AddDocument(Facts& facts, const host::PluginDocument& document)
{
    facts.insert("document version " + document.version);
    for (const auto& entry : document.exports)
    {
        const auto place = "export " + entry.id;
        facts.insert(place);
        AddMetadata(facts, place, entry.metadata);
        for (const auto& contract : entry.contracts)
            facts.insert(place + " contract " + contract);
        for (const auto& import : entry.imports)
            facts.insert(place + " import " + import.property + " <- " + import.contract +
                         (import.optional ? " (optional)" : ""));
    }
}

// From what a probe printed.
void AddInterfaces(Facts& facts, const Json& probe)
{
    for (const auto& entry : probe["exports"])
    {
        const auto place = "export " + entry["id"].get<std::string>();
        if (entry.contains("problem"))
            facts.insert(place + " is not given");
        for (const auto& interface : entry.value("interfaces", Json::array()))
            facts.insert(place + " interface " + interface.get<std::string>());
    }
}

// What the files say, without running code.
host::Outcome<Facts> ReadFacts(const std::string& file)
{
    Facts facts;
    const auto document = host::ReadPluginDocument(file);
    if (!document)
        return document.GetError();
    AddDocument(facts, *document);
    const auto symbols = host::ReadExportedSymbols(file);
    if (!symbols)
        return symbols.GetError();
    for (const auto& symbol : *symbols)
        facts.insert("symbol " + symbol);
    return facts;
}

// Nothing, and an exit code after a complaint, when the module cannot be read or probed.
std::optional<Facts> Gather(const Console& console, const std::string& file, const DiffOptions& options, ExitCode& code)
{
    auto facts = ReadFacts(file);
    if (!facts)
    {
        code = console.Fail(facts.GetError());
        return std::nullopt;
    }
    const auto probe = ProbeInChild(file, true, std::chrono::seconds(options.timeout));
    code = GetExitCode(file, probe);
    if (code != Ok && code != AnswerIsNo)
    {
        std::cerr << probe.errors;
        return std::nullopt;
    }
    AddInterfaces(*facts, Json::parse(probe.output));
    return std::move(*facts);
}

std::vector<std::string> Subtract(const Facts& from, const Facts& what)
{
    std::vector<std::string> left;
    std::set_difference(from.begin(), from.end(), what.begin(), what.end(), std::back_inserter(left));
    return left;
}

// In the order of the facts, so that what belongs together stands together.
std::string Describe(const DiffOptions& options, const Facts& before, const Facts& after)
{
    Facts all = before;
    all.insert(after.begin(), after.end());
    std::string text;
    for (const auto& fact : all)
    {
        const bool isNew = before.count(fact) == 0;
        if (isNew || after.count(fact) == 0)
            text.append(isNew ? "+ " : "- ").append(host::MakeOneLine(fact)).append("\n");
    }
    if (text.empty())
        return text;
    return "--- " + host::DisplayName(options.before) + "\n+++ " + host::DisplayName(options.after) + "\n" + text;
}

ExitCode Diff(const DiffOptions& options)
{
    const Console console;
    auto code = Ok;
    const auto before = Gather(console, options.before, options, code);
    if (!before)
        return code;
    const auto after = Gather(console, options.after, options, code);
    if (!after)
        return code;
    if (options.json)
        console.Print(PrintJson({{"old", host::DisplayName(options.before)},
                                 {"new", host::DisplayName(options.after)},
                                 {"removed", Subtract(*before, *after)},
                                 {"added", Subtract(*after, *before)}}));
    else
        console.Print(Describe(options, *before, *after));
    return *before == *after ? Ok : AnswerIsNo;
}

}  // namespace

void AddDiffCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<DiffOptions>();
    auto* const command = program.add_subcommand(
        "diff", "Show what two modules declare, export and answer differently; their code is run");
    command->add_option("OLD", options->before, "The module as it was")->required();
    command->add_option("NEW", options->after, "The module as it is now")->required();
    command->add_flag("--json", options->json, "Print JSON");
    command->add_option("--timeout", options->timeout, "How long each module may take")
        ->type_name("SECONDS")
        ->check(CLI::Range(1u, 86'400u));
    command->callback([options, &code] { code = Diff(*options); });
}

}  // namespace tvx::tool
