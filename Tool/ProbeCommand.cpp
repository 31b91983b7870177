// SPDX-License-Identifier: MIT
#include "Host/Module.h"
#include "Host/ModuleFile.h"
#include "Host/TracedInterface.h"
#include "Platform/ClassName.h"
#include "Tool/ChildCode.h"
#include "Tool/Commands.h"
#include "Tool/DocumentPrinter.h"
#include "Tool/ProbeInChild.h"

#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <sstream>

namespace tvx::tool
{

namespace
{

using Json = nlohmann::ordered_json;

struct ProbeOptions
{
    std::string file;
    bool json = false;
    bool inProcess = false;
    bool child = false;
    unsigned timeout = 10;  // seconds
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

// What a module wrote meanwhile, in lines of its own.
std::string DescribeOutput(const char* title, const std::string& output)
{
    std::istringstream lines(output);
    std::string text;
    for (std::string line; std::getline(lines, line);)
        text += "      " + host::MakeOneLine(line) + "\n";
    return text.empty() ? text : std::string("  ") + title + "\n" + text;
}

void Print(const Console& console, const std::string& file, const std::vector<Finding>& findings)
{
    std::string text = file + "\n";
    for (const auto& finding : findings)
        text += Describe(finding);
    console.Print(text + DescribeOutput("standard output", console.GetOutput().Read()));
}

void PrintAsJson(const Console& console, const std::string& file, const std::vector<Finding>& findings)
{
    auto exports = Json::array();
    for (const auto& finding : findings)
        exports.push_back(ToJson(finding));
    console.Print(PrintJson({{"file", file}, {"exports", exports}, {"output", console.GetOutput().Read()}}));
}

// Complains of every export that was not given.
ExitCode Judge(const std::vector<Finding>& findings)
{
    auto code = Ok;
    for (const auto& finding : findings)
    {
        if (!finding.problem)
            continue;
        Console::Complain(finding.problem->message);
        code = AnswerIsNo;
    }
    return code;
}

// The answers stand there by now: this may take the process with it.
void Unload(const Console& console, host::Module module, bool json)
{
    const auto before = console.GetOutput().Read().size();
    {
        const auto unloaded = std::move(module);
    }
    if (!json)
        console.Print(DescribeOutput("standard output of unloading", console.GetOutput().Read(before)));
}

// Asks the module itself and connects nothing, so that no import has to be there.
ExitCode ProbeInThisProcess(const ProbeOptions& options)
{
    const Console console;
    auto module = host::Module::Load(options.file);
    if (!module)
    {
        Console::Complain(module.GetError().message);
        return CannotRead;
    }
    std::vector<Finding> findings;
    for (const auto& entry : module->GetDocument().exports)
        findings.push_back(Examine(*module, entry.id));
    const auto file = host::DisplayName(options.file);
    if (options.json)
        PrintAsJson(console, file, findings);
    else
        Print(console, file, findings);
    Unload(console, std::move(*module), options.json);
    return Judge(findings);
}

ExitCode Probe(const ProbeOptions& options)
{
    if (options.inProcess)
        return ProbeInThisProcess(options);
    if (options.child)
    {
        Platform::BehaveAsChild();
        return MakeChildCode(ProbeInThisProcess(options));
    }
    const Console console;
    const auto run = ProbeInChild(options.file, options.json, std::chrono::seconds(options.timeout));
    console.Print(run.output);
    std::cerr << run.errors;
    return GetExitCode(options.file, run);
}

}  // namespace

void AddProbeCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<ProbeOptions>();
    auto* const command =
        program.add_subcommand("probe", "Load one module and ask it for every export that its document names");
    command->add_option("FILE", options->file, "The module, whose code is run")->required();
    command->add_flag("--json", options->json, "Print JSON");
    command->add_option("--timeout", options->timeout, "How long the module may take")
        ->type_name("SECONDS")
        ->check(CLI::Range(1u, 86'400u));
    command->add_flag("--in-process", options->inProcess, "Ask the module in this process, for a debugger");
    command->add_flag("--child", options->child)->group("");
    command->callback([options, &code] { code = Probe(*options); });
}

}  // namespace tvx::tool
