// SPDX-License-Identifier: MIT
#include "Host/ModuleFile.h"
#include "Host/TextFile.h"
#include "Platform/ChildProcess.h"
#include "Platform/Environment.h"
#include "Tool/Checks/Families.h"
#include "Tool/Checks/Report.h"
#include "Tool/Checks/Run.h"
#include "Tool/Commands.h"
#include "Tool/DocumentPrinter.h"
#include "Tool/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <thread>

namespace tvx::tool
{

namespace
{

struct CheckOptions
{
    std::string file;
    check::Selection selection;
    bool json = false;
    std::string junit;
    unsigned jobs = std::max(1u, std::thread::hardware_concurrency());
    unsigned timeout = 10;
    std::uint64_t seed = 1;
    bool inProcess = false;
    bool list = false;
    std::string child;  // the one check that this process is for
};

// Where findings show up while more are on their way: on a terminal only what did not pass, and how far it is.
class Progress
{
public:
    Progress(const Console& console, bool isTerminal, std::size_t count)
        : console_(console),
          isTerminal_(isTerminal),
          count_(count)
    {
    }

    void Tell(const check::Finding& finding)
    {
        ++done_;
        if (!isTerminal_)
        {
            if (finding.outcome.verdict != check::Verdict::Skipped)
                console_.Print(check::DescribeFinding(finding, false));
            return;
        }
        const bool isNews =
            finding.outcome.verdict != check::Verdict::Passed && finding.outcome.verdict != check::Verdict::Skipped;
        console_.Print(EraseLine + (isNews ? check::DescribeFinding(finding, HasColours()) : std::string()) + "[" +
                       std::to_string(done_) + "/" + std::to_string(count_) + "] " + finding.planned.check->name);
    }

    void End() const
    {
        if (isTerminal_)
            console_.Print(EraseLine);
    }

private:
    static bool IsSet(const char* variable)
    {
        const char* const value = std::getenv(variable);
        return value != nullptr && *value != '\0';
    }

    static bool HasColours() { return !IsSet("NO_COLOR"); }

    inline static const std::string EraseLine = "\r\033[K";

    const Console& console_;
    bool isTerminal_;
    std::size_t count_;
    std::size_t done_ = 0;
};

// A process of its own ends at once, before anything of the module is released.
ExitCode CheckAsChild(const CheckOptions& options)
{
    Platform::BehaveAsChild();
    const Console console;
    const auto plan = check::MakePlan(check::GetFamilies(), {{options.child}, {}});
    for (const auto& planned : plan)
    {
        check::RunAlone(planned, options.file, options.seed, console.GetOutput(),
                        [&](const check::Outcome& outcome)
                        {
                            console.Print(check::DescribeOutcome(outcome));
                            std::_Exit(Ok);
                        });
    }
    return Usage;
}

ExitCode GetExitCode(const check::Report& report)
{
    if (report.Count(check::Verdict::Crashed) > 0 || report.load == check::Verdict::Crashed)
        return Misbehaved;
    if (report.load != check::Verdict::Passed)
        return CannotRead;
    return report.Count(check::Verdict::Failed) > 0 ? AnswerIsNo : Ok;
}

// A module that ends the process has not passed, whatever code it gives: nobody would miss the checks that were not run.
class UntimelyEnd
{
public:
    UntimelyEnd()
    {
        static const bool isArmed = std::atexit(&Complain) == 0;
        isExpected_ = !isArmed;
    }
    ~UntimelyEnd() { isExpected_ = true; }
    UntimelyEnd(const UntimelyEnd&) = delete;
    UntimelyEnd& operator=(const UntimelyEnd&) = delete;

private:
    static void Complain()
    {
        if (isExpected_)
            return;
        Console::Complain("the module ended the process of the checks");
        std::_Exit(Misbehaved);
    }

    static inline bool isExpected_ = true;
};

check::Report Run(const CheckOptions& options, const Console& console, const std::vector<check::PlannedCheck>& plan,
                  bool isTerminal)
{
    check::Report report{host::DisplayName(options.file), options.seed, 0, {}, check::Verdict::Passed};
    Progress progress(console, isTerminal, plan.size());
    const check::RunOptions run{options.file, options.seed, options.jobs, std::chrono::seconds(options.timeout)};
    const check::TellFinding tell = [&](const check::Finding& finding)
    {
        report.findings.push_back(finding);
        if (!options.json)
            progress.Tell(finding);
    };
    // What checks leave behind that fail or crash goes with it.
    const TemporaryFolder scratch;
    Platform::SetTemporaryFolder(scratch.GetPath());
    const auto start = std::chrono::steady_clock::now();
    const UntimelyEnd untimely;
    report.load = options.inProcess ? check::RunInThisProcess(plan, run, console.GetOutput(), tell)
                                    : check::RunInChildren(plan, run, tell);
    report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (!options.json)
        progress.End();
    return report;
}

// Also before there is a report: a file that cannot be written is not to be told of only in the end.
host::Outcome<std::size_t> WriteJUnit(const CheckOptions& options, const check::Report& report)
{
    return options.junit.empty() ? 0 : host::WriteTextFile(options.junit, check::ToJUnit(report));
}

ExitCode Check(const CheckOptions& options, const std::vector<check::PlannedCheck>& plan)
{
    const bool isTerminal = Platform::IsStandardOutputTerminal();
    const Console console;
    if (const auto file = host::ModuleFile::Open(options.file); !file)
        return console.Fail(file.GetError());
    if (const auto written = WriteJUnit(options, {}); !written)
        return console.Fail(written.GetError());
    const auto report = Run(options, console, plan, isTerminal);
    console.Print(options.json ? PrintJson(check::ToJson(report))
                               : check::DescribeSkipped(report) + check::DescribeSummary(report));
    if (const auto written = WriteJUnit(options, report); !written)
        return console.Fail(written.GetError());
    return GetExitCode(report);
}

ExitCode List(const CheckOptions& options, const std::vector<check::PlannedCheck>& plan)
{
    const Console console;
    if (options.json)
    {
        console.Print(PrintJson(check::ToJson(plan)));
        return Ok;
    }
    for (const auto& planned : plan)
        console.Print(std::string(planned.check->name) + "\n    " + planned.check->description + "\n    " +
                      planned.check->rule + "\n");
    return Ok;
}

ExitCode CheckOrList(const CheckOptions& options)
{
    if (!options.child.empty())
        return CheckAsChild(options);
    const auto plan = check::MakePlan(check::GetFamilies(), options.selection);
    if (plan.empty())
    {
        Console::Complain("no check has a name or a class that was asked for (tvx check --list shows them)");
        return Usage;
    }
    return options.list ? List(options, plan) : Check(options, plan);
}

void AddSelection(CLI::App& command, CheckOptions& options)
{
    command.add_option("--only", options.selection.only, "Run checks of this name or class alone; may be repeated")
        ->type_name("PATTERN")
        ->allow_extra_args(false);
    command
        .add_option("--exclude", options.selection.exclude, "Leave out checks of this name or class; may be repeated")
        ->type_name("PATTERN")
        ->allow_extra_args(false);
}

void AddRunning(CLI::App& command, CheckOptions& options)
{
    command.add_option("-j,--jobs", options.jobs, "How many checks run at once")
        ->type_name("N")
        ->check(CLI::Range(1u, 1024u));
    command.add_option("--timeout", options.timeout, "How long one check may take")
        ->type_name("SECONDS")
        ->check(CLI::Range(1u, 86'400u));
    command.add_option("--seed", options.seed, "What random sequences begin with")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    command.add_flag("--in-process", options.inProcess, "Run all checks in this process, for a debugger");
    command.add_option("--child", options.child)->group("");
}

}  // namespace

void AddCheckCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<CheckOptions>();
    auto* const command = program.add_subcommand("check", "Check that a module keeps its promises");
    auto* const file = command->add_option("FILE", options->file, "The module, whose code is run");
    AddSelection(*command, *options);
    command->add_flag("--json", options->json, "Print JSON");
    command->add_option("--junit", options->junit, "Write the results as JUnit XML, too")->type_name("FILE");
    AddRunning(*command, *options);
    auto* const list = command->add_flag("--list", options->list, "Show the checks, and run none");
    list->excludes(file);
    command->callback(
        [options, &code]
        {
            if (options->file.empty() && !options->list)
                throw CLI::RequiredError("FILE");
            code = CheckOrList(*options);
        });
}

}  // namespace tvx::tool
