// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Runner.h"

#include <nlohmann/json.hpp>

#include <array>
#include <string>
#include <vector>

namespace tvx::check
{

// Everything that a run of checks found out.
struct Report
{
    std::string file;  // as messages show it
    std::uint64_t seed = 1;
    double seconds = 0;
    std::vector<Finding> findings;
    Verdict load = Verdict::Passed;  // what came of loading the module, selected or not; passed where nothing needed it

    std::size_t Count(Verdict verdict) const;
};

// For people: a finding in one line, and in further lines what was expected and which rule, when it did not pass. Lines are
// plain text; colours are the sequences that terminals know.
std::string DescribeFinding(const Finding& finding, bool colours);
std::string DescribeSummary(const Report& report);

// For people: how many checks were skipped, and why.
std::string DescribeSkipped(const Report& report);

// For programs; Docs/Schemas/check-report.schema.json says which JSON.
nlohmann::ordered_json ToJson(const Report& report);
nlohmann::ordered_json ToJson(const std::vector<PlannedCheck>& plan);

// For systems that show tests; Docs/Schemas/check-junit.xsd says which XML.
std::string ToJUnit(const Report& report);

}  // namespace tvx::check
