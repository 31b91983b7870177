// SPDX-License-Identifier: MIT
#include "Host/Module.h"

#include "Host/ModuleFile.h"

namespace tvx::host
{

Outcome<Module> Module::Load(const std::filesystem::path& file)
{
    auto document = ReadPluginDocument(file);
    if (!document)
        return document.GetError();
    auto name = DisplayName(file);
    std::string reason;
    // The system remembers the name as it was given, which has to mean the same file wherever the program goes.
    std::error_code failed;
    const auto place = std::filesystem::absolute(file, failed);
    auto library = Platform::DynamicLibrary::Load((failed ? file : place).string(), reason);
    if (!library)
        return MakeError(ErrorKind::CannotLoad, name + " cannot be loaded: " + reason);
    // The system gives functions as plain addresses.
    const auto getExport = reinterpret_cast<GetExportFunction>(library.FindSymbol(GetExportName));
    if (getExport == nullptr)
        return MakeError(ErrorKind::Misbehaved, name + " has no function " + GetExportName);
    return Module(std::move(name), std::move(*document), std::move(library), getExport);
}

Module::Module(std::string name, PluginDocument document, Platform::DynamicLibrary library, GetExportFunction getExport)
    : name_(std::move(name)),
      document_(std::move(document)),
      library_(std::move(library)),
      getExport_(getExport)
{
}

Outcome<Ref<IObjectBase>> Module::GetExport(const std::string& id) const
{
    Ref<IObjectBase> object;
    const auto result = getExport_(id.c_str(), object.Receive());
    if (TVX_FAILED(result))
        return MakeError(ErrorKind::Misbehaved,
                         name_ + " does not give its export \"" + id + "\" (result " + std::to_string(result) + ")");
    if (!object)
        return MakeError(ErrorKind::Misbehaved, name_ + " gives null for its export \"" + id + "\"");
    return object;
}

}  // namespace tvx::host
