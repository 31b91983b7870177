// SPDX-License-Identifier: MIT
#include "Helpers/ExportTable.h"
#include "Platform/Export.h"
#include "Src/CVariantArray.h"
#include "Src/CollectionFactory.h"
#include "Src/ConsoleLoggerPlug.h"
#include "Src/ImageFactory.h"
#include "Src/Map.h"
#include "Src/PlugDLL.h"
#include "Src/SimpleMapFactory.h"
#include "Src/StringFactory.h"
#include "Src/VariantFactory.h"

namespace
{

using namespace tvx;

// In the order of registration, which is not the order of the configuration document.
constexpr Export Exports[] = {
    {"com.talvere.general.tvx.GenericStringImplementation/1.0", &StringFactory::GetExportInstance},
    {"com.talvere.general.tvx.GenericVariantImplementation/1.1", &VariantFactory::GetExportInstance},
    {"com.talvere.general.tvx.GenericMapImplementation/1.1", &MapFactory::GetExportInstance},
    {"com.talvere.general.tvx.GenericSimpleMapImplementation/1.1", &CSimpleMapFactory::GetExportInstance},
    {"com.talvere.general.tvx.GenericCollectionImplementation/1.1", &CollectionFactory::GetExportInstance},
    {"com.talvere.general.tvx.GenericImageImplementation/1.0", &ImageFactory::GetExportInstance},
    {"com.talvere.general.tvx.BasicLogger/1.0", &CBasicLogger::GetExportInstance},
    {"com.talvere.general.tvx.GenericVariantArrayImplementation/1.0", &CVariantArrayFactory::GetExportInstance},
};

// An export that could not be made is registered as null.
void Register(const Export& entry)
{
    Ref<IObjectBase> object;
    static_cast<void>(entry.getInstance(object.Receive()));
    if (auto* const registry = PlugDLL::GetInstance())
        registry->RegisterExport(entry.id, object.Get());
}

// The module's static initialisation: the one static object with a constructor.
class ModuleLoad
{
public:
    ModuleLoad() noexcept
    try
    {
        for (const auto& entry : Exports)
            Register(entry);
    }
    catch (...)  // without memory what is registered so far is served
    {
    }

    // Made last, it goes first: nothing is given away any more when the singletons begin to go.
    ~ModuleLoad() { PlugDLL::Clear(); }

    ModuleLoad(const ModuleLoad&) = delete;
    ModuleLoad& operator=(const ModuleLoad&) = delete;
};

ModuleLoad moduleLoad;

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
try
{
    auto* const registry = tvx::PlugDLL::GetInstance();
    if (out == nullptr)
        return tvx::TVX_E_FAIL;
    *out = nullptr;
    return registry == nullptr ? tvx::TVX_E_FAIL : registry->GetExport(id, out);
}
catch (...)  // want of memory for the registry
{
    if (out != nullptr)
        *out = nullptr;
    return tvx::TVX_E_FAIL;
}
