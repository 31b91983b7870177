// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ImportMessages.h"
#include "Helpers/Ref.h"
#include "Helpers/Results.h"
#include "Interfaces/IImportsContainer.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tvx
{

// The imports of the exported class T, which is a Singleton: a face of T that keeps what the host gave under each name.
template <class T>
class ImportsContainerImpl : public IImportsContainer
{
public:
    Result SetImport(const char* name, IObjectBase* object) override
    try
    {
        TVX_RETURN_EPOINTER_IF_NULL(name);
        imports_[name] = Ref<IObjectBase>(object);
        return TVX_OK;
    }
    catch (...)
    {
        return TVX_E_POINTER;
    }

    Result OnImportsSet() override { return TVX_OK; }

    Result OnImportsHook() override { return TVX_OK; }

    // The table is empty before the first object is released: a release may run code that looks here.
    Result ClearImports() override
    {
        Imports released;
        released.swap(imports_);
        return TVX_OK;
    }

    // Gives the interface Wanted of the import name of T's shared instance, or nothing after a line on standard output that
    // says why. The imports belong to the export, not to one object of it.
    template <class Wanted>
    static Ref<Wanted> GetImport(std::string_view name)
    {
        const auto instance = T::GetOrMake();
        const auto import = instance ? instance->FindImport(name) : std::nullopt;
        if (!import)
        {
            Platform::WriteLine({NoProxy.before, name, NoProxy.after});
            return nullptr;
        }
        const auto proxy = Query<IExportProxy>(*import);
        if (!proxy)
        {
            Platform::WriteLine({NoProxyInterface.before, name, NoProxyInterface.after});
            return nullptr;
        }
        return AskProxy<Wanted>(*proxy, name);
    }

protected:
    ImportsContainerImpl() = default;
    ~ImportsContainerImpl() = default;

private:
    using Imports = std::map<std::string, Ref<IObjectBase>, std::less<>>;

    // Nothing when the import was never set; it may also have been set to null. The reference keeps the import alive while
    // its own code runs, which may empty the table.
    std::optional<Ref<IObjectBase>> FindImport(std::string_view name) const
    {
        const auto found = imports_.find(name);
        if (found == imports_.end())
            return std::nullopt;
        return found->second;
    }

    template <class Wanted>
    static Ref<Wanted> AskProxy(IExportProxy& proxy, std::string_view name)
    {
        Ref<IObjectBase> object;
        static_cast<void>(proxy.GetExportObject(object.Receive()));
        if (!object)
        {
            Platform::WriteLine({NoLibraryObject.before, name, NoLibraryObject.after});
            return nullptr;
        }
        auto wanted = Query<Wanted>(object);
        if (!wanted)
            Platform::WriteLine(
                {NoLibraryInterface.before, name, NoLibraryInterface.after, Wanted::Id, NoLibraryInterfaceEnd});
        return wanted;
    }

    Imports imports_;
};

}  // namespace tvx
