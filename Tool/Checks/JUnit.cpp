// SPDX-License-Identifier: MIT
#include "Tool/Checks/Report.h"

#include <fmt/format.h>
#include <pugixml.hpp>

#include <sstream>

namespace tvx::check
{

namespace
{

std::string ShowSeconds(double seconds)
{
    return fmt::format("{:.6f}", seconds);
}

// Text of modules and users as XML can say it: valid UTF-8 without control characters.
std::string MakeShowable(const std::string& text)
{
    const nlohmann::json shown(host::MakeOneLine(text));
    const auto quoted = shown.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    return nlohmann::json::parse(quoted).get<std::string>();
}

pugi::xml_node AddMessage(pugi::xml_node test, const char* name, const Outcome& outcome)
{
    auto element = test.append_child(name);
    element.append_attribute("message") = MakeShowable(outcome.message).c_str();
    return element;
}

// What those systems know under another name: a crash is their error, and a warning is what the test wrote.
void AddOutcome(pugi::xml_node test, const Finding& finding)
{
    const auto& [planned, outcome] = finding;
    switch (outcome.verdict)
    {
    case Verdict::Passed: break;
    case Verdict::Failed: AddMessage(test, "failure", outcome).text() = planned.check->rule; break;
    case Verdict::Crashed: AddMessage(test, "error", outcome).text() = planned.check->rule; break;
    case Verdict::Skipped: AddMessage(test, "skipped", outcome); break;
    case Verdict::Warning:
        test.append_child("system-out").text() = ("warning: " + MakeShowable(outcome.message)).c_str();
        break;
    }
}

void AddCounts(pugi::xml_node node, const Report& report)
{
    node.append_attribute("tests") = static_cast<unsigned>(report.findings.size());
    node.append_attribute("failures") = static_cast<unsigned>(report.Count(Verdict::Failed));
    node.append_attribute("errors") = static_cast<unsigned>(report.Count(Verdict::Crashed));
    node.append_attribute("skipped") = static_cast<unsigned>(report.Count(Verdict::Skipped));
    node.append_attribute("time") = ShowSeconds(report.seconds).c_str();
}

}  // namespace

std::string ToJUnit(const Report& report)
{
    pugi::xml_document document;
    auto declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    auto suites = document.append_child("testsuites");
    AddCounts(suites, report);
    auto suite = suites.append_child("testsuite");
    suite.append_attribute("name") = ("tvx check " + MakeShowable(report.file)).c_str();
    AddCounts(suite, report);
    auto seed = suite.append_child("properties").append_child("property");
    seed.append_attribute("name") = "seed";
    seed.append_attribute("value") = std::to_string(report.seed).c_str();
    for (const auto& finding : report.findings)
    {
        auto test = suite.append_child("testcase");
        test.append_attribute("classname") = finding.planned.family->name;
        test.append_attribute("name") = finding.planned.check->name;
        test.append_attribute("time") = ShowSeconds(finding.outcome.seconds).c_str();
        AddOutcome(test, finding);
    }
    std::ostringstream text;
    document.save(text, "  ");
    return text.str();
}

}  // namespace tvx::check
