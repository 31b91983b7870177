// SPDX-License-Identifier: MIT
#include "Tool/Checks/LoadedFile.h"

#include "Helpers/Ref.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/IImage.h"
#include "Interfaces/IString.h"
#include "Platform/MappedFiles.h"
#include "Tool/Checks/PublishedExports.h"

namespace tvx::check
{

namespace
{

std::string MakePath(const std::filesystem::path& file)
{
    return std::filesystem::absolute(file).string();
}

// The hold on a lock belongs to the thread: something of it may be left when the thread ends.
void UseImages(const Ref<IObjectBase>& object)
{
    const auto factory = Query<IImageFactory>(object);
    Ref<IImage> image;
    if (!factory || TVX_FAILED(factory->Create(4, 3, ColorFormat::OneChannel, DataType::OneByte, 0, image.Receive())))
        return;
    if (!image)
        return;
    image->LockRead();
    image->Unlock();
    image->LockWrite();
    image->Unlock();
}

void UseStrings(const Ref<IObjectBase>& object)
{
    const auto factory = Query<IStringFactory>(object);
    Ref<IString> string;
    if (factory)
        static_cast<void>(factory->CreateString("text", string.Receive()));
}

void UseFactory(const Ref<IObjectBase>& object)
{
    const auto factory = Query<IFactory>(object);
    Ref<IObjectBase> made;
    if (factory)
        static_cast<void>(factory->Create(made.Receive()));
}

}  // namespace

LoadedFile::LoadedFile(Trial& trial, const std::filesystem::path& file)
{
    std::string reason;
    library_ = Platform::DynamicLibrary::Load(MakePath(file), reason);
    if (!library_)
        trial.Skip("the module cannot be loaded: " + reason);
    // The system gives functions as plain addresses.
    getExport_ = reinterpret_cast<GetExportFunction>(library_.FindSymbol(GetExportName));
    if (getExport_ == nullptr)
        trial.Skip("the module has no function GetExport");
}

Ref<IObjectBase> LoadedFile::Ask(const std::string& id) const
{
    Ref<IObjectBase> object;
    const auto result = getExport_(id.c_str(), object.Receive());
    return TVX_FAILED(result) ? nullptr : object;
}

LoadedFile LoadQuietly(Trial& trial)
{
    return LoadQuietly(trial, trial.GetFile());
}

LoadedFile LoadQuietly(Trial& trial, const std::filesystem::path& file)
{
    LoadedFile module(trial, file);
    static_cast<void>(trial.TakeOutput());
    return module;
}

void UnloadQuietly(Trial& trial, LoadedFile& module)
{
    static_cast<void>(trial.TakeOutput([&] { module.Unload(); }));
}

std::vector<std::string> GetGivenIds(Trial& trial)
{
    auto ids = GetIds(trial);
    auto module = LoadQuietly(trial);
    std::erase_if(ids, [&](const std::string& id) { return !module.Ask(id); });
    static_cast<void>(trial.TakeOutput());
    UnloadQuietly(trial, module);
    return ids;
}

std::size_t UseExports(const LoadedFile& module, const std::vector<std::string>& ids)
{
    std::size_t given = 0;
    for (const auto& id : ids)
    {
        const auto object = module.Ask(id);
        given += object ? 1 : 0;
        UseImages(object);
        UseStrings(object);
        UseFactory(object);
    }
    return given;
}

void ExpectUnmapped(Trial& trial, const std::filesystem::path& file, const std::string& when)
{
    trial.Expect(!Platform::IsMapped(file), "no part of the module in memory " + when, "a part that is still mapped");
}

std::filesystem::path CopyModule(Trial& trial, const tool::TemporaryFolder& folder, const std::string& name)
{
    std::error_code failed;
    auto copy = folder.GetPath() / name;
    if (!std::filesystem::copy_file(trial.GetFile(), copy, failed))
        trial.Skip("the module's file cannot be copied: " + failed.message());
    return copy;
}

}  // namespace tvx::check
