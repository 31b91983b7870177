// SPDX-License-Identifier: MIT
#include "Host/Module.h"
#include "Host/ModuleFile.h"
#include "Host/TracedInterface.h"
#include "Platform/ClassName.h"
#include "Tool/Commands.h"
#include "Tool/DocumentPrinter.h"

#include <memory>
#include <optional>
#include <set>

namespace tvx::tool
{

namespace
{

using Json = nlohmann::ordered_json;

struct ProbeOptions
{
    std::string file;
    bool json = false;
};

// What an export turned out to be. One that the module does not give has a problem and nothing else.
struct Finding
{
    std::string id;
    std::optional<host::Error> problem;
    std::string className;
    std::set<std::string> interfaces;
    std::uint32_t references = 0;
};

bool Answers(IObjectBase& object, const char* interfaceId)
{
    void* face = nullptr;
    if (TVX_FAILED(object.QueryInterface(interfaceId, &face)))
        return false;
    // Whatever the interface, its first slots are those of the root.
    const auto given = Ref<IObjectBase>::Adopt(static_cast<IObjectBase*>(face));
    return static_cast<bool>(given);
}

// By name; some interfaces have an identifier together.
std::set<std::string> FindInterfaces(IObjectBase& object)
{
    std::set<std::string> answered;
    for (const auto* const known : host::GetTracedInterfaces())
    {
        if (known->id != nullptr && Answers(object, known->id))
            answered.emplace(known->id);
    }
    return answered;
}

std::string GetClass(const IObjectBase& object)
{
    const auto name = Platform::GetClassNameOf(object);
    return name.empty() ? "(unknown)" : host::MakeOneLine(name);
}

Finding Examine(const host::Module& module, const std::string& id)
{
    const auto object = module.GetExport(id);
    if (!object)
        return {id, object.GetError(), "", {}, 0};
    auto& found = **object;
    return {id, std::nullopt, GetClass(found), FindInterfaces(found), found.GetRefCount()};
}

std::string Describe(const Finding& finding)
{
    std::string text = "  " + host::MakeOneLine(finding.id) + "\n";
    if (finding.problem)
        return text + "      not given\n";
    text += "      class " + finding.className + "\n";
    for (const auto& answered : finding.interfaces)
        text += "      interface " + answered + "\n";
    return text + "      references " + std::to_string(finding.references) + "\n";
}

Json ToJson(const Finding& finding)
{
    if (finding.problem)
        return {{"id", finding.id}, {"problem", finding.problem->message}};
    return {{"id", finding.id},
            {"class", finding.className},
            {"interfaces", finding.interfaces},
            {"references", finding.references}};
}

void Print(const Console& console, const std::string& file, const std::vector<Finding>& findings)
{
    std::string text = file + "\n";
    for (const auto& finding : findings)
        text += Describe(finding);
    console.Print(text);
}

void PrintAsJson(const Console& console, const std::string& file, const std::vector<Finding>& findings)
{
    auto exports = Json::array();
    for (const auto& finding : findings)
        exports.push_back(ToJson(finding));
    console.Print(PrintJson({{"file", file}, {"exports", exports}}));
}

// Complains of every export that was not given, and then shows what the module wrote.
ExitCode Judge(const Console& console, const std::vector<Finding>& findings)
{
    std::optional<host::Error> last;
    for (const auto& finding : findings)
    {
        if (!finding.problem)
            continue;
        if (last)
            console.Complain(last->message);
        last = finding.problem;
    }
    return last ? console.Fail(*last) : Ok;
}

// Asks the module itself and connects nothing, so that no import has to be there.
ExitCode Probe(const ProbeOptions& options)
{
    const Console console;
    const auto module = host::Module::Load(options.file);
    if (!module)
        return console.Fail(module.GetError());
    std::vector<Finding> findings;
    for (const auto& entry : module->GetDocument().exports)
        findings.push_back(Examine(*module, entry.id));
    const auto file = host::DisplayName(options.file);
    if (options.json)
        PrintAsJson(console, file, findings);
    else
        Print(console, file, findings);
    return Judge(console, findings);
}

}  // namespace

void AddProbeCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<ProbeOptions>();
    auto* const command =
        program.add_subcommand("probe", "Load one module and ask it for every export that its document names");
    command->add_option("FILE", options->file, "The module, whose code is run")->required();
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, &code] { code = Probe(*options); });
}

}  // namespace tvx::tool
