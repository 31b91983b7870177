// SPDX-License-Identifier: MIT
#include "Tool/Checks/MapImportBench.h"

namespace tvx::check
{

Ref<IImportsContainer> GetMapImports(Trial& trial)
{
    return trial.Get<IImportsContainer>(SimpleMapExport);
}

void ImportToMaps(Trial& trial, IImportsContainer& container, const char* name, IObjectBase* object)
{
    trial.Gives("SetImport of " + Show(name), container.SetImport(name, object), TVX_OK);
}

void ClearMapImports(Trial& trial, IImportsContainer& container)
{
    trial.Gives("ClearImports", container.ClearImports(), TVX_OK);
}

void HasImportReferences(Trial& trial, const std::string& what, IObjectBase& object, std::uint32_t expected)
{
    trial.Equal("the container's references on " + what, object.GetRefCount() - 1, expected);
}

std::string LookUpSerializer(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    trial.Gives("SetString", map->SetString("key", "text"), TVX_OK);
    Ref<IObject> out;
    const auto output = trial.TakeOutput([&] { map->GetObject("key", out.Receive()); });
    return output.substr(0, output.find('\n') + 1);
}

}  // namespace tvx::check
