// SPDX-License-Identifier: MIT
#include "Host/ImportResolution.h"
#include "Host/ModuleFile.h"
#include "Tool/Commands.h"
#include "Tool/DocumentPrinter.h"

#include <memory>

namespace tvx::tool
{

namespace
{

using Json = nlohmann::ordered_json;

struct ResolveOptions
{
    std::vector<std::string> files;
    SearchOptions search;
    bool json = false;
};

const char* GetName(host::ImportState state)
{
    switch (state)
    {
    case host::ImportState::Satisfied: return "satisfied";
    case host::ImportState::OptionalMissing: return "optional and missing";
    case host::ImportState::RequiredMissing: return "required and missing";
    case host::ImportState::WrongContract: return "wrong contract";
    case host::ImportState::ProviderMissing: break;
    }
    return "provider cannot be had";
}

// Names that do not say whether the import is required are completed.
std::string DescribeState(const host::ResolvedImport& resolved)
{
    const std::string name = GetName(resolved.state);
    if (resolved.state == host::ImportState::OptionalMissing || resolved.state == host::ImportState::RequiredMissing)
        return name;
    return name + (resolved.import->optional ? " (optional)" : " (required)");
}

std::string Describe(const host::Import& import)
{
    return host::MakeOneLine(import.property + " <- " + import.contract);
}

// A line for each export below that is without an import, down to the one that cannot be had.
std::string Describe(const std::vector<host::MissingImport>& missing)
{
    std::string text;
    for (const auto& [exportName, import] : missing)
    {
        const bool isReason = import == missing.back().import;
        text += "          " + exportName + (isReason ? " needs " : " goes without ") + Describe(*import) +
                (isReason ? ", which nothing fulfils\n" : "\n");
    }
    return text;
}

std::string Describe(const host::ResolvedImport& resolved)
{
    auto text = "      import " + Describe(*resolved.import) + "\n          ";
    if (resolved.state == host::ImportState::Satisfied)
        return text + GetName(resolved.state) + " by " + resolved.provider + "\n" + Describe(resolved.missing);
    text += DescribeState(resolved) + ": " + resolved.message + "\n";
    if (!resolved.offeredContract.empty())
        text += "          " + resolved.provider + " fulfils " + host::MakeOneLine(resolved.offeredContract) + "\n";
    return text + Describe(resolved.missing);
}

Json ToJson(const std::vector<host::MissingImport>& missing)
{
    auto json = Json::array();
    for (const auto& [exportName, import] : missing)
        json.push_back({{"export", exportName}, {"property", import->property}, {"contract", import->contract}});
    return json;
}

Json ToJson(const host::ResolvedImport& resolved)
{
    Json json = {{"property", resolved.import->property},
                 {"contract", resolved.import->contract},
                 {"optional", resolved.import->optional},
                 {"state", GetName(resolved.state)}};
    if (!resolved.provider.empty())
        json["provider"] = resolved.provider;
    if (!resolved.message.empty())
        json["message"] = resolved.message;
    if (!resolved.offeredContract.empty())
        json["offered"] = resolved.offeredContract;
    if (!resolved.missing.empty())
        json["missing"] = ToJson(resolved.missing);
    return json;
}

Json ToJson(const host::ResolvedExport& resolved)
{
    auto imports = Json::array();
    for (const auto& import : resolved.imports)
        imports.push_back(ToJson(import));
    return {{"id", resolved.entry->id}, {"imports", imports}};
}

// The modules given, or all that are found.
std::size_t CountModulesToResolve(const ResolveOptions& options, const host::ModuleCatalog& given,
                                  const host::ModuleCatalog& all)
{
    return options.files.empty() ? all.GetModules().size() : given.GetModules().size();
}

// What stands in front of an export in the text is the file of its module; one without imports is not shown.
class Answer
{
public:
    void Add(const std::string& file, const std::vector<host::ResolvedExport>& exports)
    {
        text_ += file + "\n";
        auto array = Json::array();
        for (const auto& resolved : exports)
        {
            array.push_back(ToJson(resolved));
            if (!resolved.imports.empty())
                Add(resolved);
        }
        modules_.push_back({{"file", file}, {"exports", array}});
    }

    void Print(const Console& console, bool json) const
    {
        console.Print(json ? PrintJson({{"modules", modules_}}) : text_);
    }

    bool IsGood() const { return isGood_; }

private:
    void Add(const host::ResolvedExport& resolved)
    {
        text_ += "  " + host::MakeOneLine(resolved.entry->id) + "\n";
        for (const auto& import : resolved.imports)
        {
            text_ += Describe(import);
            isGood_ = isGood_ && !host::IsRequiredAndMissing(import);
        }
    }

    std::string text_;
    Json modules_ = Json::array();
    bool isGood_ = true;
};

ExitCode Resolve(const ResolveOptions& options)
{
    const Console console;
    host::ModuleCatalog given;
    for (const auto& file : options.files)
        given.Add(file);
    const auto all = options.search.MakeCatalog(options.files);
    Answer answer;
    for (std::size_t module = 0; module < CountModulesToResolve(options, given, all); ++module)
        answer.Add(host::DisplayName(all.GetModules()[module].file), host::ResolveImports(all, module));
    answer.Print(console, options.json);
    for (const auto& problem : all.GetProblems())
        console.Complain(problem.message);
    if (!all.GetProblems().empty())
        return CannotRead;
    return answer.IsGood() ? Ok : AnswerIsNo;
}

}  // namespace

void AddResolveCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<ResolveOptions>();
    auto* const command =
        program.add_subcommand("resolve", "Show what fulfils the imports of modules, without running their code");
    command->add_option("FILE", options->files, "The modules; without any, all that are found");
    options->search.AddTo(*command);
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, &code] { code = Resolve(*options); });
}

}  // namespace tvx::tool
