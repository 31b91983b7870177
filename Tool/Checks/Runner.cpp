// SPDX-License-Identifier: MIT
#include "Tool/Checks/Runner.h"

#include "Host/ModuleFile.h"
#include "Host/PluginDocument.h"
#include "Platform/ChildProcess.h"
#include "Platform/Environment.h"
#include "Tool/Checks/Families.h"
#include "Tool/Checks/Run.h"
#include "Tool/ChildCode.h"
#include "Tool/DocumentPrinter.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <atomic>
#include <future>
#include <optional>
#include <stdexcept>
#include <thread>

namespace tvx::check
{

namespace
{

constexpr std::array VerdictNames = {"passed", "failed", "crashed", "skipped", "warning"};

// How a check is run, in a process of its own or in this one.
using RunCheck = std::function<Outcome(const PlannedCheck&)>;

const PlannedCheck& GetLoadCheck()
{
    static const auto plan = MakePlan(GetFamilies(), {{LoadCheckName}, {}});
    return plan.front();
}

bool NeedsLoading(const PlannedCheck& planned)
{
    return planned.family->needs != Needs::File;
}

// What is known of a module before its checks are run: what it offers, and whether it can be loaded, which is tried first
// where any of them needs it. Where that tells what a check would come to, the check is not run.
class Gate
{
public:
    Gate(const std::vector<PlannedCheck>& plan, const std::filesystem::path& file, const RunCheck& run)
        : document_(host::ReadPluginDocument(file))
    {
        if (std::any_of(plan.begin(), plan.end(), NeedsLoading))
            load_ = run(GetLoadCheck());
    }

    const Outcome& GetLoad() const { return load_; }

    std::optional<Outcome> FindOutcome(const PlannedCheck& planned) const
    {
        if (planned.check == GetLoadCheck().check)
            return load_;
        if (load_.verdict != Verdict::Passed && NeedsLoading(planned))
            return Outcome{Verdict::Skipped, "the module cannot be loaded: " + load_.message};
        return Refuse(planned.family->exportId);
    }

private:
    std::optional<Outcome> Refuse(const char* exportId) const
    {
        if (exportId == nullptr)
            return std::nullopt;
        if (!document_)
            return Outcome{Verdict::Skipped, document_.GetError().message};
        if (!document_->Offers(exportId))
            return Outcome{Verdict::Skipped, std::string("the module does not offer ") + exportId};
        return std::nullopt;
    }

    host::Outcome<host::PluginDocument> document_;
    Outcome load_;
};

// The last line that a child wrote to standard error, which often says why it crashed.
std::string GetLastLine(std::string text)
{
    constexpr std::size_t longest = 200;
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
        text.pop_back();
    return text.substr(text.rfind('\n') + 1).substr(0, longest);
}

std::optional<std::string> GetText(const nlohmann::json& json, const char* key)
{
    if (!json.is_object() || !json.contains(key) || !json[key].is_string())
        return std::nullopt;
    return json[key].get<std::string>();
}

// A process that did not end by itself with 0 crashed, whatever it had told before; one that could not be started says nothing
// of the module.
Outcome Judge(const Platform::ChildRun& run)
{
    if (run.end == Platform::ChildRun::End::NotStarted)
        throw std::runtime_error("a process for a check " + tool::DescribeEnd(run));
    const auto told = ParseOutcome(run.output);
    if (run.end == Platform::ChildRun::End::Exited && run.exitCode == 0)
        return run.leftProcesses ? Outcome{Verdict::Failed, "expected no process to be left behind, came one"} : told;
    auto message = "expected the check to end, came that its process " + tool::DescribeEnd(run);
    if (told.verdict == Verdict::Failed)
        message += "; before, it " + told.message;
    else if (const auto line = GetLastLine(run.errors); !line.empty())
        message += ": " + line;
    return {Verdict::Crashed, host::MakeOneLine(message)};
}

// Text that is no UTF-8 becomes such, as it does on the way from a child.
Outcome MakeShowable(const Outcome& outcome)
{
    auto shown = ParseOutcome(DescribeOutcome(outcome));
    shown.seconds = outcome.seconds;
    return shown;
}

Outcome RunInChild(const PlannedCheck& planned, const RunOptions& options)
{
    const auto start = std::chrono::steady_clock::now();
    auto outcome = Judge(Platform::RunChild(
        Platform::GetProgramFile(),
        {"check", "--child", planned.check->name, "--seed", std::to_string(options.seed), "--", options.file.string()},
        options.timeout));
    outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return outcome;
}

// Whatever goes wrong on the way is told where the outcome is asked for.
void Keep(std::promise<Outcome>& promise, const Gate& gate, const RunCheck& run, const PlannedCheck& planned)
try
{
    const auto known = gate.FindOutcome(planned);
    promise.set_value(known ? *known : run(planned));
}
catch (...)
{
    promise.set_exception(std::current_exception());
}

}  // namespace

const char* GetName(Verdict verdict)
{
    return VerdictNames.at(static_cast<std::size_t>(verdict));
}

std::string DescribeOutcome(const Outcome& outcome)
{
    return tool::PrintJson(
        {{"verdict", GetName(outcome.verdict)}, {"message", outcome.message}, {"seconds", outcome.seconds}});
}

Outcome ParseOutcome(const std::string& text)
{
    const auto json = nlohmann::json::parse(text, nullptr, false);
    const auto verdict = GetText(json, "verdict");
    const auto message = GetText(json, "message");
    if (!verdict || !message)
        return {Verdict::Crashed, "expected the check to end, came no word of it"};
    const auto found = std::find(VerdictNames.begin(), VerdictNames.end(), *verdict);
    if (found == VerdictNames.end())
        return {Verdict::Crashed, "expected the check to end, came a verdict that nobody knows"};
    return {static_cast<Verdict>(found - VerdictNames.begin()), *message};
}

Outcome TryToLoad(const RunOptions& options)
{
    return RunInChild(GetLoadCheck(), options);
}

Verdict RunInChildren(const std::vector<PlannedCheck>& plan, const RunOptions& options, const TellFinding& tell)
{
    const RunCheck run = [&](const PlannedCheck& planned) { return RunInChild(planned, options); };
    const Gate gate(plan, options.file, run);
    std::vector<std::promise<Outcome>> promises(plan.size());
    std::vector<std::future<Outcome>> outcomes;
    for (auto& promise : promises)
        outcomes.push_back(promise.get_future());
    std::atomic<std::size_t> next = 0;
    const auto work = [&](const std::stop_token& stop)
    {
        for (auto place = next++; place < plan.size() && !stop.stop_requested(); place = next++)
            Keep(promises[place], gate, run, plan[place]);
    };
    std::vector<std::jthread> workers;
    for (unsigned job = 0; job < options.jobs; ++job)
        workers.emplace_back(work);
    for (std::size_t place = 0; place < plan.size(); ++place)
        tell({plan[place], outcomes[place].get()});
    return gate.GetLoad().verdict;
}

Verdict RunInThisProcess(const std::vector<PlannedCheck>& plan, const RunOptions& options,
                         const Platform::OutputDiversion& output, const TellFinding& tell)
{
    const RunCheck run = [&](const PlannedCheck& planned)
    { return MakeShowable(Run(planned, options.file, options.seed, output)); };
    const Gate gate(plan, options.file, run);
    for (const auto& planned : plan)
    {
        const auto known = gate.FindOutcome(planned);
        tell({planned, known ? *known : run(planned)});
    }
    return gate.GetLoad().verdict;
}

}  // namespace tvx::check
