// SPDX-License-Identifier: MIT
#include "Tool/Checks/Run.h"

#include "Tool/Checks/Trial.h"

#include <chrono>
#include <exception>
#include <string_view>

namespace tvx::check
{

namespace
{

// Each check has numbers of its own, whichever others run: so it can be repeated alone.
std::uint64_t MixSeed(std::uint64_t seed, std::string_view name)
{
    std::uint64_t mixed = 14695981039346656037u ^ seed;
    for (const char character : name)
        mixed = (mixed ^ static_cast<unsigned char>(character)) * 1099511628211u;
    return mixed;
}

void Prepare(const Family& family, Trial& trial)
{
    if (family.needs == Needs::File)
        return;
    trial.Load();
    static_cast<void>(trial.TakeOutput());  // what it writes while it is loaded has checks of its own
}

Outcome Try(const Family& family, const Check& check, Trial& trial)
try
{
    Prepare(family, trial);
    check.run(trial);
    trial.ExpectSilence("what is left of the check");
    if (trial.GetWarning())
        return {Verdict::Warning, *trial.GetWarning()};
    return {Verdict::Passed, check.description};
}
catch (const Ending& ending)
{
    return ending.outcome;
}
catch (const std::exception& thrown)
{
    return {Verdict::Failed,
            host::MakeOneLine(std::string("expected that no exception leaves an operation of the module, came ") +
                              thrown.what())};
}
catch (...)
{
    return {Verdict::Failed, "expected that no exception leaves an operation of the module, came one"};
}

}  // namespace

void Run(const PlannedCheck& planned, const std::filesystem::path& file, std::uint64_t seed,
         const Platform::OutputDiversion& output, const TellOutcome& tell)
{
    const auto start = std::chrono::steady_clock::now();
    Trial trial(file, MixSeed(seed, planned.check->name), output);
    auto outcome = Try(*planned.family, *planned.check, trial);
    outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    tell(outcome);
}

void RunAlone(const PlannedCheck& planned, const std::filesystem::path& file, std::uint64_t seed,
              const Platform::OutputDiversion& output, const TellOutcome& tellAndEnd)
{
    Trial trial(file, MixSeed(seed, planned.check->name), output, tellAndEnd);
    tellAndEnd(Try(*planned.family, *planned.check, trial));
}

}  // namespace tvx::check
