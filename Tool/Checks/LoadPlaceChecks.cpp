// SPDX-License-Identifier: MIT
#include "Tool/Checks/LoadedFile.h"
#include "Tool/Checks/PublishedExports.h"

namespace tvx::check
{

namespace
{

// Goes to a folder, and back in the end.
class Visit
{
public:
    Visit(Trial& trial, const std::filesystem::path& folder)
    {
        std::error_code failed;
        home_ = std::filesystem::current_path(failed);
        if (!failed)
            std::filesystem::current_path(folder, failed);
        if (failed)
            trial.Skip("the current folder cannot be changed: " + failed.message());
    }
    ~Visit()
    {
        std::error_code ignored;
        std::filesystem::current_path(home_, ignored);
    }
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

private:
    std::filesystem::path home_;
};

void LoadsFromAnotherFolder(Trial& trial)
{
    const auto ids = GetGivenIds(trial);
    const auto file = std::filesystem::absolute(trial.GetFile());
    const tool::TemporaryFolder folder;
    const Visit visit(trial, folder.GetPath());
    auto module = LoadQuietly(trial, file);
    const auto given = UseExports(module, ids);
    static_cast<void>(trial.TakeOutput());
    trial.Equal("the number of exports given in another current folder", given, ids.size());
    UnloadQuietly(trial, module);
    trial.Expect(std::filesystem::is_empty(folder.GetPath()), "no file to be left in the current folder", "one");
}

// What a module needs may lie beside it: a copy elsewhere lacks that.
bool CanBeLoaded(Trial& trial, const std::filesystem::path& copy)
{
    std::string reason;
    const bool loaded = static_cast<bool>(Platform::DynamicLibrary::Load(copy.string(), reason));
    static_cast<void>(trial.TakeOutput());
    if (!loaded)
        trial.Warn("expected a copy in another folder to be loaded, came " + reason);
    return loaded;
}

void LoadsUnderAnotherName(Trial& trial)
{
    const auto ids = GetGivenIds(trial);
    const tool::TemporaryFolder folder;
    const auto copy = CopyModule(trial, folder, "another name.tvxlib");
    if (!CanBeLoaded(trial, copy))
        return;
    auto module = LoadQuietly(trial, copy);
    const auto given = UseExports(module, ids);
    static_cast<void>(trial.TakeOutput());
    trial.Equal("the number of exports that a copy under another name gives", given, ids.size());
    UnloadQuietly(trial, module);
}

void KeepsApartFromACopy(Trial& trial)
{
    const auto ids = GetGivenIds(trial);
    const tool::TemporaryFolder folder;
    auto module = LoadQuietly(trial);
    auto copy = LoadQuietly(trial, CopyModule(trial, folder, "copy.tvxlib"));
    for (const auto& id : ids)
    {
        const auto object = module.Ask(id);
        trial.Expect(!object || object.Get() != copy.Ask(id).Get(), "a copy to give an object of its own for " + id,
                     "the module's");
    }
    static_cast<void>(trial.TakeOutput());
    UnloadQuietly(trial, copy);
    const auto given = UseExports(module, ids);
    static_cast<void>(trial.TakeOutput());
    trial.Equal("the number of exports given after the copy is unloaded", given, ids.size());
    UnloadQuietly(trial, module);
}

constexpr Check Checks[] = {
    {"load-works-in-another-folder", "The module is loaded and used with an empty current folder.",
     "A module does not look for anything in the current folder, and leaves nothing there.", LoadsFromAnotherFolder},
    {"load-works-under-another-name", "A copy of the file in another folder, under another name, is loaded and used.",
     "What a module is does not depend on what its file is called or where it lies.", LoadsUnderAnotherName},
    {"load-keeps-apart-from-a-copy", "The module and a copy of its file are loaded at the same time.",
     "Two files are two modules, each with objects of its own: nothing in one is taken for its like in the other.",
     KeepsApartFromACopy},
};

}  // namespace

extern const Family LoadPlaceFamily = {"load", nullptr, Needs::Loading, Checks};

}  // namespace tvx::check
