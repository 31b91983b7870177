// SPDX-License-Identifier: MIT
#include "Platform/MappedFiles.h"
#include "Platform/Threads.h"
#include "Tool/Checks/LoadedFile.h"
#include "Tool/Checks/PublishedExports.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <memory>
#include <optional>
#include <thread>

namespace tvx::check
{

namespace
{

void StartsNoThread(Trial& trial)
{
    const auto ids = GetIds(trial);
    const auto before = Platform::CountThreads();
    if (before == 0)
        trial.Skip("the system does not tell how many threads there are");
    auto module = LoadQuietly(trial);
    const auto loaded = Platform::CountThreads();
    trial.Expect(loaded <= before, "no more than " + Show(before) + " threads after loading", Show(loaded));
    UseExports(module, ids);
    static_cast<void>(trial.TakeOutput());
    const auto used = Platform::CountThreads();
    trial.Expect(used <= before, "no more than " + Show(before) + " threads after using every export", Show(used));
    UnloadQuietly(trial, module);
}

// The thread is there while the module goes, and what it keeps of the module is cleared when it ends.
void LetsAThreadOutliveIt(Trial& trial)
{
    const auto ids = GetGivenIds(trial);
    auto module = LoadQuietly(trial);
    std::promise<std::size_t> used;
    std::promise<void> unloaded;
    std::thread user(
        [&]
        {
            used.set_value(UseExports(module, ids));
            unloaded.get_future().wait();
        });
    const auto given = used.get_future().get();
    module.Unload();
    const bool mapped = Platform::IsMapped(trial.GetFile());
    unloaded.set_value();
    user.join();
    static_cast<void>(trial.TakeOutput());
    trial.Equal("the number of exports given on another thread", given, ids.size());
    trial.Expect(!mapped, "the module to be gone while a thread that used it is alive", "a part that is still mapped");
}

void ForgetsAThreadThatEnded(Trial& trial)
{
    const auto ids = GetGivenIds(trial);
    auto module = LoadQuietly(trial);
    std::size_t given = 0;
    std::thread([&] { given = UseExports(module, ids); }).join();
    static_cast<void>(trial.TakeOutput());
    trial.Equal("the number of exports given on another thread", given, ids.size());
    UnloadQuietly(trial, module);
    ExpectUnmapped(trial, trial.GetFile(), "after a thread that used it has ended and it was unloaded");
}

// When the module cannot be loaded, it is this thread that ends the check.
std::optional<LoadedFile> LoadOnAnotherThread(Trial& trial)
{
    std::optional<LoadedFile> module;
    std::exception_ptr ending;
    std::thread(
        [&]
        {
            try
            {
                module.emplace(trial, trial.GetFile());
            }
            catch (...)
            {
                ending = std::current_exception();
            }
        })
        .join();
    if (ending)
        std::rethrow_exception(ending);
    return module;
}

void IsLoadedOnAnotherThread(Trial& trial)
{
    const auto ids = GetGivenIds(trial);
    auto module = LoadOnAnotherThread(trial);
    const auto given = UseExports(*module, ids);
    static_cast<void>(trial.TakeOutput());
    trial.Equal("the number of exports given after the thread that loaded the module ended", given, ids.size());
    UnloadQuietly(trial, *module);
}

void IsUnloadedOnAnotherThread(Trial& trial)
{
    const auto ids = GetIds(trial);
    auto module = LoadQuietly(trial);
    UseExports(module, ids);
    std::thread([&] { module.Unload(); }).join();
    static_cast<void>(trial.TakeOutput());
    ExpectUnmapped(trial, trial.GetFile(), "after another thread has unloaded it");
}

// Loads, uses and unloads the file again and again; gives whether it always got every export.
bool LiveAgainAndAgain(const std::filesystem::path& file, const std::vector<std::string>& ids)
{
    bool whole = true;
    for (int life = 0; life < 10; ++life)
    {
        std::string reason;
        const auto library = Platform::DynamicLibrary::Load(file.string(), reason);
        if (!library)
            return false;
        const auto getExport = reinterpret_cast<GetExportFunction>(library.FindSymbol(GetExportName));
        for (const auto& id : ids)
        {
            Ref<IObjectBase> object;
            whole = getExport != nullptr && getExport(id.c_str(), object.Receive()) == TVX_OK && object && whole;
        }
    }
    return whole;
}

void IsLoadedOnManyThreads(Trial& trial)
{
    const auto ids = GetGivenIds(trial);
    const auto file = std::filesystem::absolute(trial.GetFile());
    std::vector<std::future<bool>> hosts;
    for (int i = 0; i < 4; ++i)
        hosts.push_back(std::async(std::launch::async, [&] { return LiveAgainAndAgain(file, ids); }));
    const auto whole = std::count_if(hosts.begin(), hosts.end(), [](std::future<bool>& host) { return host.get(); });
    static_cast<void>(trial.TakeOutput());
    trial.Equal("the number of threads, of 4, that always got every export", whole, 4);
}

constexpr Check Checks[] = {
    {"load-starts-no-thread", "Threads are counted before and after the module is loaded and used.",
     "A module runs on the threads of its host and starts none at loading.", StartsNoThread},
    {"load-is-outlived-by-a-thread", "A thread uses every export, and ends after the module was unloaded.",
     "A thread that used the module may end after the module is gone: nothing of the module runs at its end, and it "
     "does "
     "not keep the module there.",
     LetsAThreadOutliveIt},
    {"load-forgets-a-thread-that-ended", "A thread uses every export and ends, then the module is unloaded.",
     "What the module keeps for a thread goes with the thread or with the module, whichever goes first.",
     ForgetsAThreadThatEnded},
    {"load-works-on-another-thread", "A thread loads the module and ends; another one uses and unloads it.",
     "The module does not depend on the thread that has loaded it.", IsLoadedOnAnotherThread},
    {"load-is-undone-on-another-thread", "One thread loads and uses the module, another one unloads it.",
     "The module may be unloaded on any thread.", IsUnloadedOnAnotherThread},
    {"load-works-on-many-threads", "Four threads load the module, ask for all exports and unload it, ten times each.",
     "Hosts of one process may load and unload the module at the same time; each gets every export.",
     IsLoadedOnManyThreads},
};

}  // namespace

extern const Family LoadThreadFamily = {"load", nullptr, Needs::Loading, Checks};

}  // namespace tvx::check
