// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/IImportsContainer.h"
#include "Platform/StandardStreams.h"

#include <map>
#include <string>
#include <utility>

namespace tvx::test
{

// An export that says what the host does with it. It fetches all its imports when the test calls OnImportsHook, and keeps
// what it got until ClearImports.
class TalkingExport final : public ClassImpl<TalkingExport, IImportsContainer, IFactory>
{
public:
    using Interfaces = InterfaceList<IImportsContainer, IObject, IObjectBase, IFactory>;

    // Whether the imports are fetched at once, when they have been set.
    explicit TalkingExport(std::string name, bool eager = false) : name_(std::move(name)), eager_(eager) {}

    Result SetImport(const char* name, IObjectBase* object) override
    {
        Say("SetImport " + std::string(name));
        imports_[name] = Query<IExportProxy>(object);
        return TVX_OK;
    }
    Result OnImportsSet() override
    {
        Say("OnImportsSet");
        return eager_ ? OnImportsHook() : TVX_OK;
    }
    Result OnImportsHook() override
    {
        for (const auto& [name, proxy] : imports_)
            Say(name + (Fetch(name) ? " is there" : " is null"));
        return TVX_OK;
    }
    Result ClearImports() override
    {
        Say("ClearImports");
        imports_.clear();
        fetched_.clear();
        return TVX_OK;
    }

    // Gives the object of the import LibManager.
    Result Create(IObjectBase** out) override
    {
        *out = Fetch("LibManager").Detach();
        return *out == nullptr ? TVX_E_FAIL : TVX_OK;
    }

    // Null when the import cannot be had.
    Ref<IObjectBase> Fetch(const std::string& name)
    {
        const auto found = imports_.find(name);
        Ref<IObjectBase> object;
        if (found != imports_.end())
            found->second->GetExportObject(object.Receive());
        fetched_[name] = object;
        return object;
    }

private:
    void Say(const std::string& text) const { Platform::WriteLine({name_, ": ", text}); }

    std::string name_;
    bool eager_;
    std::map<std::string, Ref<IExportProxy>> imports_;
    std::map<std::string, Ref<IObjectBase>> fetched_;
};

inline Ref<IObjectBase> MakeTalkingExport(const char* name, bool eager = false)
{
    return Ref<IObjectBase>(static_cast<IImportsContainer*>(MakeRef<TalkingExport>(name, eager).Get()));
}

}  // namespace tvx::test
