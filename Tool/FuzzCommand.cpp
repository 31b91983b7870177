// SPDX-License-Identifier: MIT
#include "Host/ModuleFile.h"
#include "Host/TextFile.h"
#include "Tool/ChildCode.h"
#include "Tool/Commands.h"
#include "Tool/Fuzz/Fuzzer.h"
#include "Tool/ProbeInChild.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
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

// What came of following a walk. What the module writes while it is loaded has nothing to do with it.
check::Outcome TryWalk(const fuzz::Walk& walk, std::span<const fuzz::Step> steps, check::Trial& trial)
try
{
    static_cast<void>(trial.TakeOutput([&] { trial.Load(); }));
    fuzz::Follow(walk, steps, trial);
    return {};
}
catch (const check::Ending& ending)
{
    return ending.outcome;
}
catch (const std::exception& thrown)
{
    return {check::Verdict::Failed,
            std::string("expected that no exception leaves an operation of the module, came ") + thrown.what()};
}
catch (...)
{
    return {check::Verdict::Failed, "expected that no exception leaves an operation of the module, came one"};
}

// What the walk found is told before anything of the module is released or unloaded.
[[noreturn]] void EndAtOnce(const Console& console, const FuzzOptions& options, const check::Outcome& outcome)
{
    if (outcome.verdict != check::Verdict::Passed)
        console.Print(host::MakeOneLine(outcome.message) + "\n");
    const auto code = outcome.verdict == check::Verdict::Passed ? Ok : AnswerIsNo;
    std::_Exit(options.child.empty() ? code : MakeChildCode(code));
}

// Walks until the time is over, and says which one it begins: it may not come back.
ExitCode WalkAsChild(const FuzzOptions& options)
{
    const auto* const walk = fuzz::FindWalk(options.child);
    if (walk == nullptr)
        return Usage;
    const Console console;
    check::Trial trial(options.file, options.seed, console.GetOutput(),
                       [&](const check::Outcome& outcome) { EndAtOnce(console, options, outcome); });
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(options.seconds);
    for (auto seed = options.seed; std::chrono::steady_clock::now() < end; ++seed)
    {
        console.Print("seed " + std::to_string(seed) + "\n");
        check::Random random(seed);
        const auto outcome = TryWalk(*walk, fuzz::MakeSteps(*walk, random, fuzz::StepsOfAWalk), trial);
        if (outcome.verdict != check::Verdict::Passed)
            EndAtOnce(console, options, outcome);
    }
    EndAtOnce(console, options, {});
}

host::Outcome<fuzz::Replay> ReadReplay(const std::string& file)
{
    const auto text = host::ReadTextFile(file);
    if (!text)
        return text.GetError();
    return fuzz::ParseReplay(*text, host::DisplayName(file));
}

[[noreturn]] void ReproduceInThisProcess(const FuzzOptions& options, const fuzz::Replay& replay)
{
    const Console console;
    check::Trial trial(options.file, options.seed, console.GetOutput(),
                       [&](const check::Outcome& outcome) { EndAtOnce(console, options, outcome); });
    EndAtOnce(console, options, TryWalk(*replay.walk, replay.steps, trial));
}

// A module that cannot even be loaded is nothing to walk over.
ExitCode TryToLoad(const std::string& file)
{
    const auto probe = ProbeInChild(file, true, std::chrono::seconds(10));
    const auto code = GetExitCode(file, probe);
    if (code == Ok || code == AnswerIsNo)
        return Ok;
    std::cerr << probe.errors;
    return code;
}

ExitCode Reproduce(const FuzzOptions& options)
{
    const auto replay = ReadReplay(options.reproduce);
    const Console console;
    if (!replay)
        return console.Fail(replay.GetError());
    if (const auto code = TryToLoad(options.file); code != Ok)
        return code;
    const auto run = fuzz::Reproduce(options.file, options.reproduce);
    console.Print(run.output);
    std::cerr << run.errors;
    if (const auto code = FindOwnCode(run))
        return *code;
    Console::Complain("the process that walked over " + host::DisplayName(options.file) + " " + DescribeEnd(run));
    return run.end == Platform::ChildRun::End::NotStarted ? CannotRead : Misbehaved;
}

std::vector<const fuzz::Walk*> FindWalks(const host::PluginDocument& document)
{
    std::vector<const fuzz::Walk*> walks;
    for (const auto* const walk : fuzz::GetWalks())
    {
        if (std::any_of(document.exports.begin(), document.exports.end(),
                        [&](const host::Export& entry) { return entry.id == walk->exportId; }))
            walks.push_back(walk);
    }
    return walks;
}

// Writes the replay beside the others and says how to come back to it.
host::Outcome<std::size_t> Tell(const Console& console, const FuzzOptions& options, const fuzz::Finding& finding)
{
    const auto path = std::filesystem::path(options.output) / (std::string("tvx-fuzz-") + finding.replay.walk->name +
                                                               "-" + std::to_string(finding.seed) + ".replay");
    const auto name = host::DisplayName(path);
    console.Print(std::string(finding.crashed ? "crashed" : "failed") + "  " + finding.replay.walk->name + ": " +
                  finding.message + "\n         after " + std::to_string(finding.replay.steps.size()) +
                  " steps; again with: tvx fuzz " + host::DisplayName(options.file) + " --reproduce " + name + "\n");
    return host::WriteTextFile(path, "# " + finding.message + "\n" + fuzz::Describe(finding.replay));
}

ExitCode GetExitCode(const fuzz::Summary& summary)
{
    const auto crashed = [](const fuzz::Finding& finding) { return finding.crashed; };
    if (std::any_of(summary.findings.begin(), summary.findings.end(), crashed))
        return Misbehaved;
    return summary.findings.empty() ? Ok : AnswerIsNo;
}

ExitCode Fuzz(const FuzzOptions& options)
{
    const Console console;
    const auto document = host::ReadPluginDocument(options.file);
    if (!document)
        return console.Fail(document.GetError());
    if (const auto code = TryToLoad(options.file); code != Ok)
        return code;
    const auto walks = FindWalks(*document);
    if (walks.empty())
    {
        Console::Complain(host::DisplayName(options.file) + " offers nothing that there are walks for");
        return AnswerIsNo;
    }
    const auto summary =
        fuzz::Fuzz({options.file, std::chrono::seconds(options.seconds), options.seed, options.jobs}, walks);
    for (const auto& finding : summary.findings)
    {
        if (const auto written = Tell(console, options, finding); !written)
            return console.Fail(written.GetError());
    }
    console.Print(host::DisplayName(options.file) + ": " + std::to_string(summary.walks) + " walks of " +
                  std::to_string(fuzz::StepsOfAWalk) + " steps over " + std::to_string(walks.size()) + " models, " +
                  std::to_string(summary.findings.size()) + " findings (seed " + std::to_string(options.seed) + ")\n");
    return GetExitCode(summary);
}

ExitCode FuzzOrReproduce(const FuzzOptions& options)
{
    if (!options.child.empty())
        Platform::BehaveAsChild();
    if (options.reproduce.empty())
        return options.child.empty() ? Fuzz(options) : WalkAsChild(options);
    if (!options.inProcess)
        return Reproduce(options);
    const auto replay = ReadReplay(options.reproduce);
    if (replay)
        ReproduceInThisProcess(options, *replay);
    Console::Complain(replay.GetError().message);
    return CannotRead;
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
    command->add_option("--seed", options->seed, "What the random steps begin with")->type_name("N");
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
