// SPDX-License-Identifier: MIT
#include "Host/ModuleFile.h"
#include "Host/TextFile.h"
#include "Platform/ChildProcess.h"
#include "Platform/Environment.h"
#include "Tool/Checks/Runner.h"
#include "Tool/Commands.h"
#include "Tool/Fuzz/Fuzzer.h"
#include "Tool/FuzzChild.h"
#include "Tool/ShellTables.h"
#include "Tool/TemporaryFolder.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <thread>

namespace tvx::tool
{

namespace
{

struct FuzzOptions
{
    std::string file;
    unsigned seconds = 10;
    std::uint64_t seed = 1;
    unsigned jobs = std::max(1u, std::thread::hardware_concurrency());
    std::string reproduce;
    std::string output = ".";
    bool inProcess = false;
    std::string child;  // the walk that this process is for
};

// A module that cannot even be loaded is nothing to walk over.
ExitCode TryToLoad(const std::string& file)
{
    const auto load = check::TryToLoad({file});
    if (load.verdict == check::Verdict::Passed)
        return Ok;
    Console::Complain(host::DisplayName(file) + ": " + load.message);
    return load.verdict == check::Verdict::Crashed ? Misbehaved : CannotRead;
}

// For a command to be typed again.
std::string ForShell(const std::string& path)
{
    const auto isPlain = [](char character)
    {
        return std::isalnum(static_cast<unsigned char>(character)) != 0 ||
               std::string_view("._-/").find(character) != std::string_view::npos;
    };
    return std::all_of(path.begin(), path.end(), isPlain) ? path : QuoteForShell(path);
}

std::string DescribeSign(bool crashed, const fuzz::Walk& walk, const std::string& message)
{
    return std::string(crashed ? "crashed" : "failed") + "  " + walk.name + ": " + message + "\n";
}

std::string CountSteps(const fuzz::Replay& replay)
{
    return std::to_string(replay.steps.size()) + (replay.steps.size() == 1 ? " step" : " steps");
}

// The walk is kept in a file beside the others. One that does not show it again is all that there is of it.
void Tell(const Console& console, const FuzzOptions& options, const fuzz::Finding& finding)
{
    const auto& walk = *finding.replay.walk;
    const auto path = std::filesystem::path(options.output) /
                      (std::string("tvx-fuzz-") + walk.name + "-" + std::to_string(finding.seed) + ".replay");
    const auto next = finding.comesAgain
                          ? "again with: tvx fuzz " + ForShell(options.file) + " --reproduce " + ForShell(path.string())
                          : "the walk in " + host::DisplayName(path) + " does not show it again";
    console.Print(DescribeSign(finding.crashed, walk, finding.message) + "         after " +
                  CountSteps(finding.replay) + "; " + next + "\n");
    const auto written = host::WriteTextFile(path, "# " + finding.message + "\n" + fuzz::Describe(finding.replay));
    if (!written)
        throw std::runtime_error(written.GetError().message);
}

// A folder that no walk can be written to is not to be told of when one is found.
void TryToWriteInto(const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    const TemporaryFolder tried(folder);
}

std::vector<const fuzz::Walk*> FindWalks(const host::PluginDocument& document)
{
    std::vector<const fuzz::Walk*> walks;
    for (const auto* const walk : fuzz::GetWalks())
    {
        if (document.Offers(walk->exportId))
            walks.push_back(walk);
    }
    return walks;
}

ExitCode WalkOver(const Console& console, const FuzzOptions& options, const std::vector<const fuzz::Walk*>& walks)
{
    const TemporaryFolder scratch;
    Platform::SetTemporaryFolder(scratch.GetPath());
    std::size_t findings = 0;
    auto code = Ok;
    const auto tell = [&](const fuzz::Finding& finding)
    {
        ++findings;
        code = std::max(code, finding.crashed ? Misbehaved : AnswerIsNo);
        Tell(console, options, finding);
    };
    const auto count =
        fuzz::Fuzz({options.file, std::chrono::seconds(options.seconds), options.seed, options.jobs, scratch.GetPath()},
                   walks, tell);
    console.Print(host::DisplayName(options.file) + ": " + std::to_string(count) + " walks of " +
                  std::to_string(fuzz::StepsOfAWalk) + " steps over " + std::to_string(walks.size()) + " models, " +
                  std::to_string(findings) + " findings (seed " + std::to_string(options.seed) + ")\n");
    return code;
}

ExitCode Fuzz(const Console& console, const FuzzOptions& options)
{
    const auto document = host::ReadPluginDocument(options.file);
    if (!document)
        return console.Fail(document.GetError());
    TryToWriteInto(options.output);
    if (const auto code = TryToLoad(options.file); code != Ok)
        return code;
    const auto walks = FindWalks(*document);
    if (!walks.empty())
        return WalkOver(console, options, walks);
    console.Print(host::DisplayName(options.file) + " offers nothing that there are walks for\n");
    return Ok;
}

// Of a module that offers what the walk is over.
host::Outcome<fuzz::Replay> ReadReplay(const FuzzOptions& options)
{
    const auto text = host::ReadTextFile(options.reproduce);
    if (!text)
        return text.GetError();
    auto replay = fuzz::ParseReplay(*text, host::DisplayName(options.reproduce));
    if (!replay)
        return replay;
    const auto document = host::ReadPluginDocument(options.file);
    if (!document)
        return document.GetError();
    if (!document->Offers(replay->walk->exportId))
        return host::MakeError(host::ErrorKind::BadSettings, host::DisplayName(options.reproduce) + " walks over " +
                                                                 replay->walk->exportId + ", which " +
                                                                 host::DisplayName(options.file) + " does not offer");
    return replay;
}

ExitCode ReproduceInChild(const Console& console, const FuzzOptions& options, const fuzz::Replay& replay)
{
    constexpr std::chrono::seconds limit(10);
    if (const auto code = TryToLoad(options.file); code != Ok)
        return code;
    const auto run = fuzz::RunReplay(options.file, options.reproduce, limit);
    std::cerr << run.errors;
    if (run.sign == fuzz::WalkRun::Sign::None)
        return Ok;
    const bool crashed = run.sign == fuzz::WalkRun::Sign::Crash;
    console.Print(DescribeSign(crashed, *replay.walk, run.message));
    return crashed ? Misbehaved : AnswerIsNo;
}

ExitCode Reproduce(const Console& console, const FuzzOptions& options)
{
    const auto replay = ReadReplay(options);
    if (!replay)
        return console.Fail(replay.GetError());
    if (options.inProcess)
        FollowReplay(console, options.file, *replay, options.child.empty() ? FuzzEnd::ExitCode : FuzzEnd::ChildCode);
    return ReproduceInChild(console, options, *replay);
}

ExitCode FuzzOrReproduce(const FuzzOptions& options)
{
    if (!options.child.empty())
        Platform::BehaveAsChild();
    const Console console;
    if (!options.reproduce.empty())
        return Reproduce(console, options);
    if (options.child.empty())
        return Fuzz(console, options);
    if (const auto* const walk = fuzz::FindWalk(options.child))
        WalkAsChild(console, options.file, *walk, options.seed, std::chrono::seconds(options.seconds));
    return Usage;
}

}  // namespace

void AddFuzzCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<FuzzOptions>();
    auto* const command =
        program.add_subcommand("fuzz", "Do random things with what a module makes, beside models of it");
    command->add_option("FILE", options->file, "The module, whose code is run")->required();
    command->add_option("--seconds", options->seconds, "How long to go on")
        ->type_name("N")
        ->check(CLI::Range(1u, 86'400u));
    command->add_option("--seed", options->seed, "What the random steps begin with")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    command->add_option("-j,--jobs", options->jobs, "How many processes walk at once")
        ->type_name("N")
        ->check(CLI::Range(1u, 1024u));
    auto* const reproduce =
        command->add_option("--reproduce", options->reproduce, "Follow the walk in this file again")->type_name("FILE");
    command->add_option("-o,--output", options->output, "The folder for the walks that find something")
        ->type_name("FOLDER");
    command->add_flag("--in-process", options->inProcess, "Follow it in this process, for a debugger")
        ->needs(reproduce);
    command->add_option("--child", options->child)->group("");
    command->callback([options, &code] { code = FuzzOrReproduce(*options); });
}

}  // namespace tvx::tool
