// SPDX-License-Identifier: MIT
#include "Platform/AddressOrigin.h"
#include "Platform/Environment.h"
#include "Tool/Checks/LoadedFile.h"
#include "Tool/Checks/PublishedExports.h"

#include <algorithm>
#include <cfenv>
#include <clocale>
#include <cstdint>
#include <exception>
#include <iostream>
#include <iterator>
#include <limits>
#include <locale>
#include <new>
#include <set>

namespace tvx::check
{

namespace
{

std::string ShowFunction(const void* address)
{
    if (address == nullptr)
        return "none";
    return "the function at " + Show(reinterpret_cast<std::uintptr_t>(address)) + " in " +
           Platform::GetAddressOrigin(address);
}

std::string DescribeLocale()
{
    const auto* const name = std::setlocale(LC_ALL, nullptr);
    return std::locale().name() + ", " + (name == nullptr ? "none" : name);
}

std::string DescribeFolder()
{
    std::error_code failed;
    return std::filesystem::current_path(failed).string();
}

std::string DescribeRounding()
{
    return "mode " + Show(std::fegetround());
}

// Start code of some compilers' fast arithmetic switches the smallest numbers off for the thread that loads it.
std::string DescribeSmallNumbers()
{
    const volatile double smallest = std::numeric_limits<double>::min();
    const volatile double half = smallest / 2;
    const volatile double whole = half * 2;
    return whole > 0 ? "there" : "taken for 0";
}

std::string DescribeTerminateHandler()
{
    return ShowFunction(reinterpret_cast<const void*>(std::get_terminate()));
}

std::string DescribeNewHandler()
{
    return ShowFunction(reinterpret_cast<const void*>(std::get_new_handler()));
}

std::string DescribeStream()
{
    return "flags " + Show(static_cast<std::int64_t>(std::cout.flags())) + ", precision " +
           Show(std::cout.precision()) + ", width " + Show(std::cout.width()) + ", exceptions " +
           Show(static_cast<int>(std::cout.exceptions()));
}

// Something that belongs to the whole process, and what it is like at the moment.
struct Surrounding
{
    const char* name;
    std::string (*describe)();
};

constexpr Surrounding Locale = {"the locale", DescribeLocale};
constexpr Surrounding Folder = {"the current folder", DescribeFolder};
constexpr Surrounding Rounding = {"the rounding of floating-point numbers", DescribeRounding};
constexpr Surrounding SmallNumbers = {"the smallest floating-point numbers", DescribeSmallNumbers};
constexpr Surrounding TerminateHandler = {"the terminate handler", DescribeTerminateHandler};
constexpr Surrounding NewHandler = {"the new handler", DescribeNewHandler};
constexpr Surrounding Stream = {"the formatting of the standard output stream", DescribeStream};

template <const Surrounding& Thing>
void LeavesAlone(Trial& trial)
{
    const auto ids = GetIds(trial);
    const std::string name = Thing.name;
    const auto before = Thing.describe();
    auto module = LoadQuietly(trial);
    trial.Equal(name + " after loading", Thing.describe(), before);
    UseExports(module, ids);
    static_cast<void>(trial.TakeOutput());
    trial.Equal(name + " after using every export", Thing.describe(), before);
    UnloadQuietly(trial, module);
    trial.Equal(name + " after unloading", Thing.describe(), before);
}

std::set<std::string> ReadVariables()
{
    const auto variables = Platform::GetVariables();
    return {variables.begin(), variables.end()};
}

// The names of variables only: what they hold may be secret.
std::string FindChangedVariable(const std::set<std::string>& before)
{
    const auto after = ReadVariables();
    std::vector<std::string> changed;
    std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(),
                                  std::back_inserter(changed));
    return changed.empty() ? "" : changed.front().substr(0, changed.front().find('='));
}

void LeavesTheEnvironment(Trial& trial)
{
    const auto ids = GetIds(trial);
    const auto before = ReadVariables();
    auto module = LoadQuietly(trial);
    trial.Equal("the environment variable changed by loading", FindChangedVariable(before), "");
    UseExports(module, ids);
    static_cast<void>(trial.TakeOutput());
    trial.Equal("the environment variable changed by using every export", FindChangedVariable(before), "");
    UnloadQuietly(trial, module);
    trial.Equal("the environment variable changed by unloading", FindChangedVariable(before), "");
}

constexpr const char Rule[] =
    "What belongs to the whole process is the host's: a module leaves it as it is at loading, in use and at unloading.";

constexpr Check Checks[] = {
    {"load-leaves-the-locale", "The locale is compared before and after loading, use and unloading.", Rule,
     LeavesAlone<Locale>},
    {"load-leaves-the-current-folder", "The current folder is compared before and after loading, use and unloading.",
     Rule, LeavesAlone<Folder>},
    {"load-leaves-the-rounding", "The rounding mode is compared before and after loading, use and unloading.", Rule,
     LeavesAlone<Rounding>},
    {"load-leaves-the-smallest-numbers",
     "The smallest numbers are computed before and after loading, use and unloading.",
     "A module does not switch off the smallest floating-point numbers of its host, as start code for fast arithmetic "
     "does.",
     LeavesAlone<SmallNumbers>},
    {"load-leaves-the-terminate-handler", "The handler is compared before and after loading, use and unloading.", Rule,
     LeavesAlone<TerminateHandler>},
    {"load-leaves-the-new-handler", "The handler is compared before and after loading, use and unloading.", Rule,
     LeavesAlone<NewHandler>},
    {"load-leaves-the-environment", "The variables are compared before and after loading, use and unloading.", Rule,
     LeavesTheEnvironment},
    {"load-leaves-the-output-stream", "The stream's state is compared before and after loading, use and unloading.",
     Rule, LeavesAlone<Stream>},
};

}  // namespace

extern const Family LoadSurroundingsFamily = {"load", nullptr, Needs::Loading, Checks};

}  // namespace tvx::check
