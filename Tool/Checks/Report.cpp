// SPDX-License-Identifier: MIT
#include "Tool/Checks/Report.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

namespace tvx::check
{

namespace
{

using Json = nlohmann::ordered_json;

constexpr const char Green[] = "\033[32m";
constexpr const char Red[] = "\033[31m";
constexpr const char Yellow[] = "\033[33m";
constexpr const char Plain[] = "\033[0m";

const char* GetColour(Verdict verdict)
{
    switch (verdict)
    {
    case Verdict::Passed: return Green;
    case Verdict::Failed:
    case Verdict::Crashed: return Red;
    case Verdict::Skipped:
    case Verdict::Warning: break;
    }
    return Yellow;
}

Json Describe(const PlannedCheck& planned)
{
    Json json = {{"name", planned.check->name}, {"class", planned.family->name}};
    if (planned.family->exportId != nullptr)
        json["export"] = planned.family->exportId;
    json["description"] = planned.check->description;
    json["rule"] = planned.check->rule;
    return json;
}

}  // namespace

std::size_t Report::Count(Verdict verdict) const
{
    return static_cast<std::size_t>(std::count_if(
        findings.begin(), findings.end(), [&](const Finding& finding) { return finding.outcome.verdict == verdict; }));
}

std::string DescribeFinding(const Finding& finding, bool colours)
{
    const auto& [planned, outcome] = finding;
    auto verdict = fmt::format("{:<8}", GetName(outcome.verdict));
    if (colours)
        verdict = GetColour(outcome.verdict) + verdict + Plain;
    auto text = fmt::format("{} {} ({:.3f} s)\n", verdict, planned.check->name, outcome.seconds);
    if (outcome.verdict == Verdict::Passed)
        return text;
    text += fmt::format("         {}\n", outcome.message);
    text += fmt::format("         rule: {}\n", planned.check->rule);
    return text;
}

std::string DescribeSkipped(const Report& report)
{
    std::map<std::string, std::size_t> reasons;
    for (const auto& finding : report.findings)
    {
        if (finding.outcome.verdict == Verdict::Skipped)
            ++reasons[finding.outcome.message];
    }
    std::string text;
    for (const auto& [reason, count] : reasons)
        text += fmt::format("skipped  {} checks: {}\n", count, reason);
    return text;
}

std::string DescribeSummary(const Report& report)
{
    return fmt::format("{}: {} checks in {:.1f} s: {} passed, {} failed, {} crashed, {} skipped, {} with a warning "
                       "(seed {})\n",
                       report.file, report.findings.size(), report.seconds, report.Count(Verdict::Passed),
                       report.Count(Verdict::Failed), report.Count(Verdict::Crashed), report.Count(Verdict::Skipped),
                       report.Count(Verdict::Warning), report.seed);
}

Json ToJson(const std::vector<PlannedCheck>& plan)
{
    auto checks = Json::array();
    for (const auto& planned : plan)
        checks.push_back(Describe(planned));
    return {{"checks", checks}};
}

Json ToJson(const Report& report)
{
    Json summary;
    for (const auto verdict : {Verdict::Passed, Verdict::Failed, Verdict::Crashed, Verdict::Skipped, Verdict::Warning})
        summary[GetName(verdict)] = report.Count(verdict);
    auto checks = Json::array();
    for (const auto& [planned, outcome] : report.findings)
    {
        auto check = Describe(planned);
        check["result"] = GetName(outcome.verdict);
        check["message"] = outcome.message;
        check["seconds"] = outcome.seconds;
        checks.push_back(std::move(check));
    }
    return {{"file", report.file},
            {"seed", report.seed},
            {"seconds", report.seconds},
            {"summary", summary},
            {"checks", checks}};
}

}  // namespace tvx::check
