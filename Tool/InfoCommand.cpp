// SPDX-License-Identifier: MIT
#include "Tool/Commands.h"
#include "Tool/DocumentPrinter.h"

#include <memory>

namespace tvx::tool
{

namespace
{

struct InfoOptions
{
    std::string file;
    bool json = false;
    bool quiet = false;
};

ExitCode PrintInfo(const InfoOptions& options)
{
    const Console console;
    const auto document = host::ReadPluginDocument(options.file);
    if (!document)
        return console.Fail(document.GetError());
    if (options.quiet)
        return Ok;
    const host::InstalledModule module{options.file, *document};
    console.Print(options.json ? PrintJson(ModuleToJson(module)) : DescribeModule(module));
    return Ok;
}

}  // namespace

void AddInfoCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<InfoOptions>();
    auto* const command = program.add_subcommand("info", "Show the document of one module, without running its code");
    command->add_option("FILE", options->file, "The module")->required();
    auto* const json = command->add_flag("--json", options->json, "Print JSON");
    command->add_flag("-q,--quiet", options->quiet, "Print nothing but what is wrong with the document")
        ->excludes(json);
    command->callback([options, &code] { code = PrintInfo(*options); });
}

}  // namespace tvx::tool
