// SPDX-License-Identifier: MIT
#include "Tool/Commands.h"
#include "Tool/Tour.h"

#include <memory>

namespace tvx::tool
{

namespace
{

struct TourOptions
{
    SearchOptions search;
    std::string file;
};

}  // namespace

void AddTourCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<TourOptions>();
    auto* const command = program.add_subcommand("tour", "See the modules at work on a settings file, step by step");
    command->add_option("FILE", options->file, "A JSON settings file, such as Examples/Data/camera-settings.json")
        ->required();
    options->search.AddTo(*command);
    command->callback([options, &code] { code = Tour(options->search.MakeCatalog(), options->file).Run(); });
}

}  // namespace tvx::tool
