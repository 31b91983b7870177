// SPDX-License-Identifier: MIT
#include "Tool/Checks/Run.h"

#include "Tool/Checks/Trial.h"
#include "Tool/TemporaryFolder.h"

#include <chrono>
#include <exception>
#include <optional>
#include <string_view>

namespace tvx::check
{

namespace
{

void Follow(const PlannedCheck& planned, Trial& trial)
{
    if (planned.family->needs == Needs::Module)
        static_cast<void>(trial.TakeOutput([&] { trial.Load(); }));  // what it writes has checks of its own
    planned.check->run(trial);
    trial.ExpectSilence("what is left of the check");
}

// A check that passed says what it tried, one that passed with a warning says that.
Outcome Complete(const PlannedCheck& planned, const Trial& trial, Outcome outcome)
{
    if (outcome.verdict != Verdict::Passed)
        return outcome;
    if (trial.GetWarning())
        return {Verdict::Warning, *trial.GetWarning()};
    return {Verdict::Passed, planned.check->description};
}

}  // namespace

std::uint64_t MixSeed(std::uint64_t seed, std::string_view name)
{
    std::uint64_t mixed = 14695981039346656037u ^ seed;
    for (const char character : name)
        mixed = (mixed ^ static_cast<unsigned char>(character)) * 1099511628211u;
    return mixed;
}

Outcome TryOut(const std::function<void()>& deed)
try
{
    deed();
    return {};
}
catch (const Ending& ending)
{
    return ending.outcome;
}
catch (const tool::NoTemporaryFolder& failure)
{
    return {Verdict::Skipped, host::MakeOneLine(failure.what())};
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

Outcome Run(const PlannedCheck& planned, const std::filesystem::path& file, std::uint64_t seed,
            const Platform::OutputDiversion& output)
{
    const auto start = std::chrono::steady_clock::now();
    Trial trial(file, MixSeed(seed, planned.check->name), output);
    auto outcome = Complete(planned, trial, TryOut([&] { Follow(planned, trial); }));
    outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return outcome;
}

void RunAlone(const PlannedCheck& planned, const std::filesystem::path& file, std::uint64_t seed,
              const Platform::OutputDiversion& output, const std::function<void(const Outcome&)>& tellAndEnd)
{
    std::optional<Trial> trial;
    const auto tell = [&](const Outcome& outcome) { tellAndEnd(Complete(planned, *trial, outcome)); };
    trial.emplace(file, MixSeed(seed, planned.check->name), output, tell);
    tell(TryOut([&] { Follow(planned, *trial); }));
}

}  // namespace tvx::check
