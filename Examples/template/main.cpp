// SPDX-License-Identifier: MIT
// A host: finds the modules, loads the greeter with what it imports, and lets it greet.
#include "Host/LibraryManager.h"
#include "IGreeter.h"
#include "Interfaces/IFactory.h"

#include <iostream>

int main(int count, char** arguments)
{
    tvx::host::ModuleCatalog catalog;
    catalog.Add(GREETER_MODULE);  // its document is read, no code of it runs yet
    catalog.Add(TVX_MODULES);     // the folder with what the greeter imports
    tvx::host::LibraryManager manager(std::move(catalog));

    const auto factory = manager.GetExportAs<tvx::IFactory>("com.example.greeting.Greeter/1.0");
    if (!factory)
    {
        std::cerr << factory.GetError().message << '\n';
        return 1;
    }
    tvx::Ref<tvx::IObjectBase> object;
    (*factory)->Create(object.Receive());
    const auto greeter = tvx::Query<greeting::IGreeter>(object);  // empty when the object refuses, or there is none
    tvx::Ref<tvx::IString> text;
    if (!greeter || tvx::TVX_FAILED(greeter->Greet(count > 1 ? arguments[1] : "you", text.Receive())))
    {
        std::cerr << "there is no greeting\n";
        return 1;
    }
    std::cout << text->GetText() << '\n';
}  // references go first, then the manager unmaps the modules
