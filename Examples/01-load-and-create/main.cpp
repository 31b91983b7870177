// SPDX-License-Identifier: MIT
// A host: finds the modules, makes a settings map out of an export, and works with it.
#include "Host/LibraryManager.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISimpleMap.h"

#include <iostream>

constexpr const char SettingsMaps[] = "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1";

int main(int count, char** arguments)
{
    tvx::host::ModuleCatalog catalog;
    catalog.Add(count > 1 ? arguments[1] : TVX_MODULES);  // documents are read, no code of a module runs yet
    tvx::host::LibraryManager manager(std::move(catalog));

    const auto factory = manager.GetExportAs<tvx::IFactory>(SettingsMaps);
    if (!factory)
    {
        std::cerr << factory.GetError().message << '\n';
        return 1;
    }
    tvx::Ref<tvx::IObjectBase> object;
    (*factory)->Create(object.Receive());  // the module's object, with one reference that is ours
    const auto settings = tvx::Query<tvx::ISimpleMap>(object);
    settings->SetInt("Display\\Width", 1920);
    settings->SetDouble("Display\\Zoom", 1.25);

    tvx::Ref<tvx::ISimpleMap> display;
    settings->GetSubMap("Display", display.Receive());
    std::int32_t width = 0;
    display->GetInt("Width", &width);
    std::cout << "Width = " << width << '\n';
}  // references go first, then the manager unmaps the modules
