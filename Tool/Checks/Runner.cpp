// SPDX-License-Identifier: MIT
#include "Tool/Checks/Runner.h"

#include "Host/ModuleFile.h"
#include "Host/PluginDocument.h"
#include "Platform/ChildProcess.h"
#include "Platform/Environment.h"
#include "Tool/Checks/Run.h"
#include "Tool/ChildCode.h"
#include "Tool/DocumentPrinter.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>
#include <optional>
#include <thread>

namespace tvx::check
{

namespace
{

constexpr std::array VerdictNames = {"passed", "failed", "crashed", "skipped", "warning"};

// Findings come in any order and are told in that of the plan.
class Orderly
{
public:
    Orderly(const std::vector<PlannedCheck>& plan, const TellFinding& tell)
        : plan_(plan),
          tell_(tell),
          outcomes_(plan.size())
    {
    }

    void Add(std::size_t place, Outcome outcome)
    {
        const std::lock_guard guard(lock_);
        outcomes_[place] = std::move(outcome);
        for (; told_ < plan_.size() && outcomes_[told_]; ++told_)
            tell_({plan_[told_], *outcomes_[told_]});
    }

private:
    const std::vector<PlannedCheck>& plan_;
    const TellFinding& tell_;
    std::mutex lock_;
    std::vector<std::optional<Outcome>> outcomes_;
    std::size_t told_ = 0;
};

// What the module offers, from its document. A check of something else needs no process to be skipped.
class Offer
{
public:
    explicit Offer(const std::filesystem::path& file) : document_(host::ReadPluginDocument(file)) {}

    std::optional<Outcome> Refuse(const Family& family) const
    {
        if (family.exportId == nullptr)
            return std::nullopt;
        if (!document_)
            return Outcome{Verdict::Skipped, document_.GetError().message};
        if (!Has(family.exportId))
            return Outcome{Verdict::Skipped, std::string("the module does not offer ") + family.exportId};
        return std::nullopt;
    }

private:
    bool Has(std::string_view id) const
    {
        return std::any_of(document_->exports.begin(), document_->exports.end(),
                           [&](const host::Export& entry) { return entry.id == id; });
    }

    host::Outcome<host::PluginDocument> document_;
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

// A process that did not end by itself with 0 crashed, whatever it had told before.
Outcome Judge(const Platform::ChildRun& run)
{
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

void RunInChildren(const std::vector<PlannedCheck>& plan, const RunOptions& options, const TellFinding& tell)
{
    const Offer offer(options.file);
    Orderly findings(plan, tell);
    std::atomic<std::size_t> next = 0;
    const auto work = [&]
    {
        for (auto place = next++; place < plan.size(); place = next++)
        {
            const auto refused = offer.Refuse(*plan[place].family);
            findings.Add(place, refused ? *refused : RunInChild(plan[place], options));
        }
    };
    std::vector<std::jthread> workers;
    for (unsigned job = 1; job < options.jobs; ++job)
        workers.emplace_back(work);
    work();
}

void RunInThisProcess(const std::vector<PlannedCheck>& plan, const RunOptions& options,
                      const Platform::OutputDiversion& output, const TellFinding& tell)
{
    const Offer offer(options.file);
    for (const auto& planned : plan)
    {
        if (const auto refused = offer.Refuse(*planned.family))
        {
            tell({planned, *refused});
            continue;
        }
        Run(planned, options.file, options.seed, output,
            [&](const Outcome& outcome) {
                tell({planned, MakeShowable(outcome)});
            });
    }
}

}  // namespace tvx::check
