// SPDX-License-Identifier: MIT
#include "Host/ExportedSymbols.h"
#include "Platform/AddressOrigin.h"
#include "Platform/MappedFiles.h"
#include "Tool/Checks/Families.h"
#include "Tool/Checks/LoadedFile.h"
#include "Tool/Checks/PublishedExports.h"

#include <algorithm>
#include <chrono>
#include <map>

namespace tvx::check
{

namespace
{

void ExportsOneSymbol(Trial& trial)
{
    const auto symbols = host::ReadExportedSymbols(trial.GetFile());
    if (!symbols)
        trial.Skip(symbols.GetError().message);
    const auto other =
        std::find_if(symbols->begin(), symbols->end(), [](const std::string& name) { return name != GetExportName; });
    trial.Expect(other == symbols->end(), "GetExport to be the only exported symbol",
                 other == symbols->end() ? "it" : Show(symbols->size()) + ", one of them " + *other);
    trial.Equal("the number of exported symbols", symbols->size(), 1u);
}

void IsReadQuickly(Trial& trial)
{
    using namespace std::chrono_literals;
    const auto start = std::chrono::steady_clock::now();
    static_cast<void>(trial.GetDocument());
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    if (time > 50ms)
        trial.Warn("expected reading the document to take 50 ms at most, came " + Show(time.count()) + " ms");
}

void Loads(Trial& trial)
{
    std::string reason;
    const auto file = std::filesystem::absolute(trial.GetFile());
    const auto library = Platform::DynamicLibrary::Load(file.string(), reason);
    trial.Expect(static_cast<bool>(library), "the system to load the module", reason);
    trial.Expect(library.FindSymbol(GetExportName) != nullptr, "the module to have the function GetExport", "none");
    static_cast<void>(trial.TakeOutput());
    trial.Pass();  // before it is unloaded, which is another promise
}

void LoadsOnceForTwo(Trial& trial)
{
    const auto ids = GetIds(trial);
    auto first = LoadQuietly(trial);
    LoadedFile second(trial, trial.GetFile());
    trial.Equal("what loading a second time writes to standard output", trial.TakeOutput(), "");
    trial.Expect(first.GetFunction() == second.GetFunction(), "one GetExport for both", "two");
    for (const auto& id : ids)
        trial.Same("the export " + id + " of the second one", second.Ask(id).Get(), first.Ask(id).Get());
    static_cast<void>(trial.TakeOutput());
    UnloadQuietly(trial, second);
    UnloadQuietly(trial, first);
}

void StaysForTheSecond(Trial& trial)
{
    const auto ids = GetGivenIds(trial);
    auto first = LoadQuietly(trial);
    auto second = LoadQuietly(trial);
    trial.Writes("unloading the first of two", "", [&] { first.Unload(); });
    const auto given = UseExports(second, ids);
    static_cast<void>(trial.TakeOutput());
    trial.Equal("the number of exports given after the first of two is unloaded", given, ids.size());
    UnloadQuietly(trial, second);
}

void IsUnmapped(Trial& trial)
{
    auto module = LoadQuietly(trial);
    // As data: a function that is gone may not be touched.
    const auto* const address = reinterpret_cast<const void*>(module.GetFunction());
    trial.Expect(Platform::IsMapped(trial.GetFile()), "the file to be mapped while it is loaded", "no part of it");
    UnloadQuietly(trial, module);
    ExpectUnmapped(trial, trial.GetFile(), "after unloading");
    const auto origin = Platform::GetAddressOrigin(address);
    trial.Expect(origin.empty(), "nothing where GetExport was", Show(origin));
}

void IsUnmappedAfterUse(Trial& trial)
{
    const auto ids = GetGivenIds(trial);
    auto module = LoadQuietly(trial);
    const auto given = UseExports(module, ids);
    static_cast<void>(trial.TakeOutput());
    trial.Equal("the number of exports given", given, ids.size());
    UnloadQuietly(trial, module);
    ExpectUnmapped(trial, trial.GetFile(), "after every export was used and released, and the module unloaded");
}

// What one life of the module writes.
std::string Live(Trial& trial, const std::vector<std::string>& ids)
{
    LoadedFile module(trial, trial.GetFile());
    auto output = trial.TakeOutput();
    UseExports(module, ids);
    static_cast<void>(trial.TakeOutput());
    return output + trial.TakeOutput([&] { module.Unload(); });
}

void LivesAHundredTimes(Trial& trial)
{
    const auto ids = GetIds(trial);
    const auto first = Live(trial, ids);
    const auto mappings = Platform::CountMappings();
    for (int life = 2; life <= 100; ++life)
        trial.Equal("what load number " + std::to_string(life) + " writes", Live(trial, ids), first);
    ExpectUnmapped(trial, trial.GetFile(), "after it was loaded and unloaded a hundred times");
    const auto more = Platform::CountMappings();
    trial.Expect(more <= mappings, "no more than " + Show(mappings) + " pieces of files in memory", Show(more));
}

void GivesExportsInAnyOrder(Trial& trial)
{
    const auto ids = GetIds(trial);
    auto module = LoadQuietly(trial);
    std::map<std::string, Ref<IObjectBase>> objects;
    for (const auto& id : ids)
    {
        objects[id] = module.Ask(id);
        trial.Expect(static_cast<bool>(objects[id]), "GetExport to give " + Show(id), "a refusal or null");
    }
    for (auto id = ids.rbegin(); id != ids.rend(); ++id)
        trial.Same("the export " + *id + " when it is asked for again", module.Ask(*id).Get(), objects[*id].Get());
    static_cast<void>(trial.TakeOutput());
    objects.clear();
    UnloadQuietly(trial, module);
}

constexpr Check FileChecks[] = {
    {"load-exports-get-export-only", "The symbols that the file shows to others are read, without running it.",
     "GetExport is the only exported symbol: others could be taken for those of another module, or keep the module "
     "from "
     "being unloaded.",
     ExportsOneSymbol},
    {"load-scan-is-quick", "The document is read, and the time taken.",
     "Hosts read the documents of all modules when they start; one should take no longer than 50 ms.", IsReadQuickly},
};

constexpr Check Checks[] = {
    {LoadCheckName, "The system loads the file and looks up GetExport.",
     "The module needs nothing that a host does not have, and has the function GetExport with C linkage.", Loads},
    {"load-twice-is-once", "The module is loaded a second time by the same process.",
     "Two hosts in one process have one module: nothing is made or written a second time, and an id gives both the "
     "same "
     "object.",
     LoadsOnceForTwo},
    {"load-stays-for-the-second-host", "The module is loaded twice, unloaded once and used.",
     "The module stays as it is until the last host of the process has unloaded it.", StaysForTheSecond},
    {"load-is-undone-by-unloading", "The module is loaded and unloaded, with nothing asked for.",
     "Unloading takes the file out of the process: nothing in a module may keep it there, so that it can be replaced.",
     IsUnmapped},
    {"load-is-undone-after-use", "Every export is used and released, and the module unloaded.",
     "What was made and released again does not keep the module from being unloaded.", IsUnmappedAfterUse},
    {"load-repeats-a-hundred-times", "The module is loaded, used and unloaded a hundred times.",
     "Each time it writes and gives the same as the first time, and leaves nothing behind.", LivesAHundredTimes},
    {"load-gives-exports-in-any-order", "All exports are asked for in the document's order and backwards.",
     "Each id of the document gives an object, always the same one, whatever was asked for before.",
     GivesExportsInAnyOrder},
};

}  // namespace

extern const Family LoadFileFamily = {"load", nullptr, Needs::File, FileChecks};
extern const Family LoadFamily = {"load", nullptr, Needs::Loading, Checks};

}  // namespace tvx::check
