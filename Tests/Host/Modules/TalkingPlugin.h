// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/TVXPluginImpl.h"
#include "Tests/Host/Modules/TalkingExport.h"

#include <string>

namespace tvx::test
{

// A plug-in object with imports that says what the host does with it.
class TalkingPlugin final : public ClassImpl<TalkingPlugin, IImportsContainer, TVXPluginImpl>
{
public:
    using Interfaces = InterfaceList<IImportsContainer, IObject, IObjectBase, ITVXPlugin, IConstTVXPlugin>;

    Result SetImport(const char* name, IObjectBase*) override { return Say("SetImport " + std::string(name)); }
    Result OnImportsSet() override { return Say("OnImportsSet"); }
    Result OnImportsHook() override { return Say("OnImportsHook"); }
    Result ClearImports() override { return Say("ClearImports"); }
    Result SetMetadataMap(ISimpleMap* map) override
    {
        Say(map == nullptr ? "SetMetadataMap null" : "SetMetadataMap");
        return TVXPluginImpl::SetMetadataMap(map);
    }

private:
    static Result Say(const std::string& text)
    {
        Platform::WriteLine({"Plugin: ", text});
        return TVX_OK;
    }
};

}  // namespace tvx::test
